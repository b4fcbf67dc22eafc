"""The list of mutants, and the way of its entries into the sources."""

import zlib
from dataclasses import dataclass

KEYS = ("name", "file", "in", "after", "from", "to", "tests", "survives", "whole build")


# Of one variable, in whichever namespace a file is included.
DECLARATION = 'extern "C" volatile int kivFisheyeMutant;\n'


class ListError(Exception):
    """What is wrong with an entry, in one sentence that names it."""


@dataclass(frozen=True)
class Mutant:
    name: str
    file: str
    line: str  # the line that it changes; empty when `original` stands once in the file
    after: str  # a line above that one, where there are several like it
    original: str
    mutated: str
    tests: str  # GoogleTest's filter for what is likely to kill it
    survives: str  # why nothing observable changes; empty for a mutant that must be killed
    is_statement: bool  # and not an expression
    whole_build: bool  # it stands where no run-time choice can, and takes a program of its own

    @property
    def number(self):
        """Stays the same when others come or go, so that their files need no new compilation."""
        return zlib.crc32(self.name.encode()) & 0x7FFFFFFF

    def instead_of(self, original):
        if self.whole_build:
            return self.mutated
        if self.is_statement:
            return f"if (KivFisheyeMutant({self.number})) {{ {self.mutated}; }} else {original}"
        return f"(KivFisheyeMutant({self.number}) ? ({self.mutated}) : ({original}))"

    def place(self, lines):
        """Where it stands: the index of its line, and the columns of the original there."""
        first = self._only(lines, 0, self.after, "after") + 1 if self.after else 0
        if self.line:
            index = self._only(lines, first, self.line, "in", take_first=bool(self.after))
            found = [index] * lines[index].count(self.original)
        else:
            found = [i for i, line in enumerate(lines) for _ in range(line.count(self.original))]
        if len(found) != 1:
            raise ListError(f"{self.name}: 'from' stands {len(found)} times in {self.file}")
        column = lines[found[0]].index(self.original)
        return found[0], column, column + len(self.original)

    def _only(self, lines, first, wanted, key, take_first=False):
        found = [i for i in range(first, len(lines)) if lines[i].strip() == wanted]
        if not found or (len(found) > 1 and not take_first):
            raise ListError(f"{self.name}: '{key}' is {len(found)} lines of {self.file}")
        return found[0]


def _blocks(text):
    """The entries as dictionaries, with the number of each one's first line."""
    block, begin = {}, 0
    for number, line in enumerate(text.splitlines() + [""], 1):
        if not line.strip():
            if block:
                yield begin, block
            block = {}
        elif not line.startswith("#"):
            key, colon, value = line.partition(":")
            if not colon or key not in KEYS or key in block:
                raise ListError(f"line {number} of the list is not understood: {line}")
            begin = begin if block else number
            block[key] = value.strip()


def read_list(text):
    """All mutants. A block without a name says the file and the tests of those after it."""
    mutants, common = [], {}
    for number, block in _blocks(text):
        if "name" not in block:
            if "file" not in block or set(block) - {"file", "tests"}:
                raise ListError(f"line {number} of the list begins an entry without a name")
            common = block
            continue
        entry = {**common, **block}
        original = entry.get("from", entry.get("in", "").rstrip(";"))
        if not original or not entry.get("to") or "file" not in entry:
            raise ListError(f"{entry['name']}: it lacks a file, a 'from' or a 'to'")
        mutants.append(
            Mutant(entry["name"], entry["file"], entry.get("in", ""), entry.get("after", ""),
                   original, entry["to"], entry.get("tests", ""), entry.get("survives", ""),
                   "from" not in entry or original.startswith("return "), "whole build" in entry))
    for kind, seen in (("name", [m.name for m in mutants]), ("number", [m.number for m in mutants])):
        for mutant, value in zip(mutants, seen):
            if seen.count(value) > 1:
                raise ListError(f"{mutant.name}: another mutant has the same {kind}")
    return mutants


def _rendered(line, begin, end, places):
    """Part of a line with its mutants, which are sorted, and of which one may hold another."""
    parts, at = [], begin
    while places:
        (_, first, last, mutant), rest = places[0], places[1:]
        inner = [place for place in rest if place[1] < last]
        for place in inner:
            if place[2] > last:
                raise ListError(f"{mutant.name}: it overlaps with {place[3].name}")
        original = _rendered(line, first, last, inner)
        parts.append(line[at:first])
        parts.append(mutant.instead_of(original))
        at, places = last, rest[len(inner):]
    return "".join(parts) + line[at:end]


def with_mutants(text, mutants):
    """A source file with these mutants in it; the original is what it does without a choice."""
    lines = text.split("\n")
    places = sorted(((*mutant.place(lines), mutant) for mutant in mutants),
                    key=lambda place: (place[0], place[1], -place[2], place[3].name))
    for index in {place[0] for place in places}:
        line = lines[index]
        lines[index] = _rendered(line, 0, len(line), [p for p in places if p[0] == index])
    return DECLARATION + "\n".join(lines)
