"""Walks the measurements of the loaded format, for the other examples."""

from typing import Dict, List

import kavu


def names_of(editor: kavu.Kavu) -> List[str]:
    """The names of all measurements, each once, by word and frame."""
    names: Dict[str, None] = {}
    frames = editor.GetNumberOfFrames()
    for word in range(1, editor.GetWordsPerMinorFrame()):
        for frame in range(1, frames + 1):
            for index in range(1, editor.CountMeasurementsAt(word, frame) + 1):
                names[editor.GetMeasurementName(word, frame, index)] = None
    return list(names)
