#!/usr/bin/env python3
"""Writes a map of the rooms to standard output, as an SVG: a box for each room, an arrow for the includes between two.

The boxes form a diagonal, the highest room first. The includes of a room leave its box to the right and enter the lower
room from above. A circle where the two lines meet holds their number; lines that cross without one have nothing to do
with each other. The background is transparent: the colours are legible on a white page and on a nearly black one.
"""

import collections
import pathlib
import re
import subprocess

PROJECT = pathlib.Path(__file__).resolve().parent.parent
FOLDERS = ("platform/", "src/", "app/")
SOURCES = [f"{folder}*.[ch]pp*" for folder in FOLDERS]

WIDTH, HEIGHT = 174, 44  # of a box
RIGHT, DOWN = 116, 66  # from one box to the next
MARGIN = 10
GREY, BLUE = "#727a85", "#1f75ed"
STYLE = f"""
    text {{ font: 12px 'DejaVu Sans', Verdana, Arial, sans-serif; fill: {GREY}; text-anchor: middle }}
    .room {{ font-size: 13px; font-weight: bold; fill: {BLUE} }}
    .count {{ fill: white }}
    rect {{ fill: {BLUE}; fill-opacity: 0.08; stroke: {BLUE}; stroke-width: 1.5 }}
    line {{ stroke: {GREY}; stroke-width: 1.2 }}
    circle, path {{ fill: {GREY} }}"""


def git(*arguments):
    return subprocess.check_output(["git", *arguments], cwd=PROJECT, text=True).splitlines()


def read_rooms():
    """The patterns and names of the rooms, lowest first."""
    lines = (PROJECT / "scripts" / "rooms.txt").read_text(encoding="utf-8").splitlines()
    return [line.split(maxsplit=1) for line in lines if not line.startswith("#")]


def survey(rooms):
    """The number of files for each place, counted from the top, and of includes for each pair of places."""
    def place(file):
        return next(len(rooms) - i for i, (pattern, _) in enumerate(rooms, 1) if re.match(pattern, file))

    sources = {file.removesuffix(".in") for file in git("ls-files", "--", *SOURCES)}  # version.hpp is generated
    includes = collections.Counter()
    for line in git("grep", '^#include "', "--", *SOURCES):
        file, header = re.match('(.*?):#include "(.*)"', line).groups()
        includes.update((place(file), place(folder + header)) for folder in FOLDERS if folder + header in sources)
    return collections.Counter(map(place, sources)), includes


def left(place):
    return MARGIN + place * RIGHT


def top(place):
    return MARGIN + place * DOWN


def centre(place):
    return left(place) + WIDTH / 2, top(place) + HEIGHT / 2


def text(x, y, style, content):
    return f'<text x="{x}" y="{y}" class="{style}">{content}</text>'


def room(place, name, files):
    x, y = centre(place)
    yield f'<rect x="{left(place)}" y="{top(place)}" width="{WIDTH}" height="{HEIGHT}" rx="6"/>'
    yield text(x, y - 3, "room", name)
    yield text(x, y + 14, "files", f"{files} file" if files == 1 else f"{files} files")


def line_from(source, targets):
    start, y = left(source) + WIDTH, centre(source)[1]
    yield f'<line x1="{start}" y1="{y}" x2="{centre(max(targets))[0]}" y2="{y}"/>'


def arrow_to(target, sources):
    x, end = centre(target)[0], top(target)
    yield f'<line x1="{x}" y1="{centre(min(sources))[1]}" x2="{x}" y2="{end - 8}"/>'
    yield f'<path d="M {x} {end} l -5 -9 h 10 z"/>'


def number(source, target, count):
    x, y = centre(target)[0], centre(source)[1]
    yield f'<circle cx="{x}" cy="{y}" r="11"/>'
    yield text(x, y + 4, "count", count)


def draw(names, files, includes):
    pairs = [pair for pair in includes if pair[0] != pair[1]]
    for source in {source for source, _ in pairs}:
        yield from line_from(source, [target for one, target in pairs if one == source])
    for target in {target for _, target in pairs}:
        yield from arrow_to(target, [source for source, other in pairs if other == target])
    for pair in pairs:
        yield from number(*pair, includes[pair])
    for place, name in enumerate(names):
        yield from room(place, name, files[place])


def main():
    rooms = read_rooms()
    names = [name for _, name in reversed(rooms)]
    width, height = left(len(names) - 1) + WIDTH + MARGIN, top(len(names) - 1) + HEIGHT + MARGIN
    print(f'<svg xmlns="http://www.w3.org/2000/svg" width="{width}" height="{height}" viewBox="0 0 {width} {height}">')
    print(f"<style>{STYLE}\n</style>")
    print(*draw(names, *survey(rooms)), "</svg>", sep="\n")


if __name__ == "__main__":
    main()
