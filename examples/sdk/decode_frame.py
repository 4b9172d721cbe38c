#!/usr/bin/env python3
"""Decodes one minor frame of a PCM stream into named values.

    decode_frame.py FILE LINK FRAME_NUMBER FRAME

FRAME is a file with the bytes of one minor frame, which begins with its sync pattern; words follow
each other without gaps, the first bit of each being the most significant. A measurement that is in
the frame more than once has several values.
"""

import sys
from typing import Dict, List

import kavu_sdk


class Frame:
    """The bits of a minor frame, word by word."""

    def __init__(self, data: bytes, lengths: List[int]) -> None:
        if len(data) * 8 < sum(lengths):
            raise ValueError(f"The frame has {len(data) * 8} bits, not {sum(lengths)}.")
        bits = "".join(f"{byte:08b}" for byte in data)
        self.words = []
        at = 0
        for length in lengths:
            self.words.append(bits[at:at + length])
            at += length

    def bits(self, fragment: kavu_sdk.Fragment, sample: int) -> str:
        """The bits of a fragment in its n-th word of this frame, most significant first."""
        word = self.words[list(fragment.word)[sample]]
        taken = "".join(word[bit - 1] for bit in fragment.bits if bit <= len(word))
        return taken[::-1] if fragment.transfer_order == "L" else taken


def decode(session: kavu_sdk.Session, link: str, frame_number: int,
           data: bytes) -> Dict[str, List[int]]:
    """The values of all measurements that are in this minor frame. Frames count from 1."""
    frame = Frame(data, session.word_lengths(link))
    values: Dict[str, List[int]] = {}
    for measurement in session.measurements(link):
        for location in measurement.locations:
            if any(frame_number not in fragment.frame for fragment in location.fragments):
                continue
            samples = min(len(list(fragment.word)) for fragment in location.fragments)
            for sample in range(samples):
                # The first fragment is the most significant part of the value.
                bits = "".join(frame.bits(fragment, sample) for fragment in location.fragments)
                if bits:
                    values.setdefault(measurement.name, []).append(int(bits, 2))
    return values


def main(path: str, link: str, frame_number: str, frame_path: str) -> int:
    """Prints a line for each measurement: engineering values where there is a polynomial."""
    with open(frame_path, "rb") as file:
        data = file.read()
    with kavu_sdk.Session(path) as session:
        for name, values in decode(session, link, int(frame_number), data).items():
            try:
                convert = session.polynomial(name)
            except kavu_sdk.Error:
                convert = None  # a discrete or a derived measurement, for example
            print(name, *(convert(value) if convert else value for value in values))
    return 0


if __name__ == "__main__":
    if len(sys.argv) != 5:
        sys.exit(__doc__)
    sys.exit(main(*sys.argv[1:]))
