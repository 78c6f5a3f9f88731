"""Writes the change log in the form that Debian's packages hold: changelog.py CHANGELOG.md TO."""

import datetime
import re
import sys
import textwrap

MAINTAINER = "The Brindle Run developers <brindle-run@example.org>"


def entries(text):
    """(version, date, changes) for each "## VERSION (DATE)" and the "- " items below it."""
    for part in re.split(r"^## ", text, flags=re.M)[1:]:
        head, _, body = part.partition("\n")
        version, date = re.fullmatch(r"([0-9.]+) \((\d{4}-\d\d-\d\d)\)", head.strip()).groups()
        items = re.split(r"^- ", body, flags=re.M)[1:]
        yield version, datetime.date.fromisoformat(date), [" ".join(item.split()) for item in items]


def main():
    with open(sys.argv[1], encoding="utf-8") as source, open(sys.argv[2], "w", encoding="utf-8") as to:
        for version, date, changes in entries(source.read()):
            print(f"brindle-run ({version}) unstable; urgency=medium\n", file=to)
            for change in changes:
                print(textwrap.fill(change, 79, initial_indent="  * ", subsequent_indent="    "),
                      file=to)
            print(f"\n -- {MAINTAINER}  {date:%a, %d %b %Y} 12:00:00 +0000\n", file=to)


main()
