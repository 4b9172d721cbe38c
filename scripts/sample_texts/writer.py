"""Writes a TMATS text of an edition, without what that edition lacks."""


class Writer:
    def __init__(self, edition):
        self.edition = edition
        self.lines = []

    def put(self, prefix, code, value, since=1996, until=9999):
        """One command, if the edition has it and there is a value."""
        if since <= self.edition <= until and value != "":
            self.lines.append(f"{prefix}{code}:{value};")

    def put_all(self, prefix, *rows):
        for row in rows:
            self.put(prefix, *row)

    def raw(self, text):
        self.lines.append(text)

    def date(self, month_day, year, time=""):
        """A date in the format of the edition. In the oldest one day and month are equal, because
        dates of that edition are read both ways round."""
        if self.edition < 1999:
            month = month_day[:2]
            return f"{month}-{month}-{year % 100:02d}" + time
        return f"{month_day}-{year}" + time

    def text(self):
        """With real line breaks in values, and CR LF everywhere."""
        return ("\n".join(self.lines) + "\n").replace("\n", "\r\n").encode("ascii")
