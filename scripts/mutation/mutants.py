"""Makes the mutants of a file: changes of one value, one operator, one statement or one row."""

import re
from typing import NamedTuple

from mutation import cpp


class Mutant(NamedTuple):
    file: str
    unit: str
    kind: str
    line: int
    line_text: str
    change: str
    start: int
    end: int
    text: str
    everywhere: bool  # a change that can be felt by units that do not call the function it stands in

    @property
    def key(self):
        return f"{self.file} | {self.line_text} | {self.change}"


OPERATORS = {
    "+": ["-"], "-": ["+"], "*": ["/"], "/": ["*"], "%": ["*"], "<<": [">>"], ">>": ["<<"], "&": ["|"], "|": ["&"], "^": ["&"],
    "<": ["<=", ">"], "<=": ["<", ">"], ">": [">=", "<"], ">=": [">", "<"], "==": ["!="], "!=": ["=="],
    "&&": ["||"], "||": ["&&"], "+=": ["-="], "-=": ["+="], "*=": ["/="], "/=": ["*="], "|=": ["&="], "&=": ["|="],
    "<<=": [">>="], ">>=": ["<<="],
}  # fmt: skip
KEYWORDS = {"if", "for", "while", "switch", "do", "else", "case", "default", "using", "try", "catch", "throw", "const",
            "constexpr", "static", "auto", "delete", "new", "template", "typename", "struct", "static_assert"}


def changed_number(text):
    """Other numbers in the place of one: its neighbours, or one with another digit."""
    if re.fullmatch(r"\d+[uUlL]*", text):
        digits = re.match(r"\d+", text).group()
        suffix = text[len(digits) :]
        return [f"{int(digits) + step}{suffix}" for step in (1, -1) if int(digits) + step >= 0]
    if re.fullmatch(r"0[xX][\dA-Fa-f']+[uUlL]*", text):
        body = re.match(r"0[xX]([\dA-Fa-f']+)", text).group(1).replace("'", "")
        return [f"0x{int(body, 16) ^ 1:X}" + text[2 + len(re.match(r"0[xX]([\dA-Fa-f']+)", text).group(1)) :]]
    point = text.find(".")
    if point >= 0 and point + 1 < len(text) and text[point + 1].isdigit():
        return [f"{text[: point + 1]}{(int(text[point + 1]) + 1) % 10}{text[point + 2 :]}"]
    return []


def changed_strings(text):
    """The literal with one letter or digit changed, once for every forty characters; an empty one gets a character."""
    body = text.index('"') + 1
    plain = [
        at for at in range(body, len(text) - 1)
        if text[at].isascii() and text[at].isalnum() and text[at - 1] != "\\" and not re.match(r"\{[^{}]*$", text[body:at][-3:])
    ]  # fmt: skip
    if not plain:
        return [text[:-1] + 'x"']
    parts = 1 + (len(text) - 3) // 40
    places = sorted({plain[(2 * part + 1) * len(plain) // (2 * parts)] for part in range(parts)})
    return [text[:at] + ("B" if text[at] == "A" else "b" if text[at] == "a" else "1" if text[at] == "0" else
                         "a" if text[at].islower() else "A" if text[at].isupper() else "0") + text[at + 1 :]
            for at in places]  # fmt: skip


def _closing(tokens, place):
    """The place of the parenthesis that closes the one at a place."""
    depth = 0
    for at in range(place, len(tokens)):
        depth += tokens[at].text in ("(", "[", "{")
        depth -= tokens[at].text in (")", "]", "}")
        if depth == 0:
            return at
    return len(tokens) - 1


def _statement_end(tokens, place):
    """The place of the semicolon that ends the statement at a place."""
    while place < len(tokens) and tokens[place].text != ";":
        place = _closing(tokens, place) + 1 if tokens[place].text in ("(", "[", "{") else place + 1
    return min(place, len(tokens) - 1)


class _UnitMutants:
    """The mutants of one function or table of a C++ source: replacements as (start, end, text, label)."""

    def __init__(self, text, unit, enumerators):
        self.text, self.unit, self.tokens, self.enumerators = text, unit, unit.tokens, enumerators
        self.made = []

    def replace(self, start, end, new, label=None):
        old = self.text[start:end]
        self.made.append((start, end, new, label or f"{old} -> {new}"))

    def all(self):
        for place, token in enumerate(self.tokens):
            self.values(place, token)
            if token.kind == "operator":
                self.operators(place, token)
            elif token.kind == "name" and self.unit.kind == "function":
                self.statements(place, token)
        return self.made

    def values(self, place, token):
        if token.kind == "number":
            for new in changed_number(token.text):
                self.replace(token.start, token.end, new)
        elif token.kind == "string":
            for new in changed_strings(token.text):
                self.replace(token.start, token.end, new)
        elif token.kind == "char" and re.fullmatch(r"'[A-Za-z0-9 ]'", token.text):
            self.replace(token.start, token.end, "'#'")
        elif token.text in ("true", "false"):
            self.replace(token.start, token.end, "false" if token.text == "true" else "true")
        elif token.kind == "name" and place >= 2 and self.tokens[place - 1].text == "::":
            self.enumerator(place, token)

    def enumerator(self, place, token):
        """A constant of a table or an enumeration becomes the next one that the file mentions."""
        owner = self.tokens[place - 2].text
        others = self.enumerators.get(owner, [])
        follows = self.tokens[place + 1].text if place + 1 < len(self.tokens) else ";"
        if token.text not in others or follows in ("(", "::", "<", "{", "&", "*") or len(others) < 2:
            return
        other = others[(others.index(token.text) + 1) % len(others)]
        self.replace(token.start, token.end, other, f"{owner}::{token.text} -> {owner}::{other}")

    def operators(self, place, token):
        before, after = self.text[token.start - 1], self.text[token.end]
        previous = self.tokens[place - 1].text if place else ""
        if token.text in OPERATORS and before.isspace() and after.isspace() and previous not in ("operator", "auto", "const"):
            for new in OPERATORS[token.text]:
                self.replace(token.start, token.end, new)
        elif token.text in ("++", "--") and previous != "operator":
            self.replace(token.start, token.end, "--" if token.text == "++" else "++")
        elif token.text in ("!", "-") and not after.isspace() and previous != "operator":
            self.replace(token.start, token.end, "", f"{token.text} dropped before {self.tokens[place + 1].text}")

    def statements(self, place, token):
        tokens = self.tokens
        if token.text in ("if", "while") and place + 1 < len(tokens):
            open_at = place + 1 + (tokens[place + 1].text == "constexpr")
            close = _closing(tokens, open_at)
            inner = [each.text for each in tokens[open_at + 1 : close]]
            begin = open_at + 1 + (len(inner) - inner[::-1].index(";") if ";" in inner else 0)
            if ";" in inner or "=" not in inner:
                start, end = tokens[begin].start, tokens[close].start
                condition = " ".join(self.text[start:end].split())
                self.replace(start, end, f"!({self.text[start:end]})", f"{token.text} negated: {condition}")
        elif token.text in ("continue", "break"):
            self.replace(token.start, token.end, "break" if token.text == "continue" else "continue")
        elif token.text == "return":
            self.returned(place)
        elif tokens[place - 1].text in (";", "{", "}") and token.text not in KEYWORDS:
            self.removed(place)

    def returned(self, place):
        end = _statement_end(self.tokens, place)
        value = self.text[self.tokens[place].end : self.tokens[end].start].strip()
        head = [token.text for token in self.unit.head]
        if not value:
            self.replace(self.tokens[place].start, self.tokens[end].end, ";", "return removed")
        elif value not in ("{}", "true", "false", "0", "nullptr") and "&" not in head[: head.index("(") if "(" in head else 0]:
            short = " ".join(value.split())
            self.replace(self.tokens[place].end, self.tokens[end].start, " {}", f"return {short} -> return {{}}")

    def removed(self, place):
        end = _statement_end(self.tokens, place)
        texts = [token.text for token in self.tokens[place:end]]
        depth, assigned = 0, False
        for text in texts:
            depth += text in ("(", "[", "{")
            depth -= text in (")", "]", "}")
            assigned = assigned or (depth == 0 and text in ("=", "+=", "-=", "|=", "&=", "*=", "<<=", ">>=", "^="))
        declares = any(self.tokens[at].kind == "name" and self.tokens[at + 1].kind == "name" for at in range(place, end - 1))
        calls = len(texts) > 2 and texts[-1] == ")"
        if (assigned or calls) and not declares and texts[1:2] not in (["&"], ["*"]):
            start, stop = self.tokens[place].start, self.tokens[end].start
            self.replace(start, stop, "static_cast<void>(0)", f"removed: {' '.join(self.text[start:stop].split())}")


def _enumerators(text):
    """For each scope, the constants of it that the source mentions, in the order of their first mention."""
    found = {}
    for owner, name in re.findall(r"\b([A-Z]\w*)::([A-Z_]\w*)\b(?!\s*[(:<&*{])", text):
        if name not in found.setdefault(owner, []):
            found[owner].append(name)
    return found


def _of_source(file, text):
    enumerators = _enumerators(text)
    for unit in cpp.units(text):
        head = {token.text for token in unit.head}
        everywhere = unit.kind != "function" or bool(head & {"constexpr", "consteval", "concept"})
        for start, end, new, label in _UnitMutants(text, unit, enumerators).all():
            yield unit.name or "unnamed", unit.kind, start, end, new, label, everywhere


class Row(NamedTuple):
    macro: str
    start: int
    end: int
    columns: list  # of (start, end)


def rows_of(text):
    """The rows of a row file: the calls of its macros, outside directives."""
    tokens = cpp.tokenize(text)
    found = []
    for place, token in enumerate(tokens):
        if token.kind != "name" or not token.text.startswith("QUENZO_") or tokens[place + 1 : place + 2] == []:
            continue
        if tokens[place + 1].text != "(":
            continue
        close = _closing(tokens, place + 1)
        columns, begin = [], place + 2
        for at in range(place + 2, close + 1):
            if at == close or tokens[at].text == ",":
                columns.append((tokens[begin].start, tokens[at - 1].end))
                begin = at + 1
        found.append(Row(token.text, token.start, tokens[close].end, columns))
    return found


def _column_mutants(text, row, after, column):
    start, end = row.columns[column]
    value = text[start:end]
    for token in cpp.tokenize(value):
        if token.kind == "string":
            for new in changed_strings(token.text):
                label = f"{token.text} -> {new}" if len(token.text) < 60 else f"{changed_word(token.text, new)}"
                yield start + token.start, start + token.end, new, label
        elif token.kind == "number" and column + 1 < len(row.columns) + 1:
            for new in changed_number(token.text):
                yield start + token.start, start + token.end, new, f"column {column + 1}: {token.text} -> {new}"
        elif token.text in ("true", "false"):
            new = "false" if token.text == "true" else "true"
            yield start + token.start, start + token.end, new, f"column {column + 1}: {token.text} -> {new}"
    flags = value.split(" | ")
    if len(flags) > 1:
        for dropped in flags:
            yield start, end, " | ".join(flag for flag in flags if flag != dropped), f"flag dropped: {dropped}"
    elif value.isidentifier() and value not in ("true", "false") and column > 0 and after is not None:
        other = text[after.columns[column][0] : after.columns[column][1]] if column < len(after.columns) else value
        if other != value:
            yield start, end, other, f"column {column + 1}: {value} -> {other}"


def changed_word(old, new):
    """What differs between two long literals, with a little of what stands around it."""
    at = next(place for place, (left, right) in enumerate(zip(old + " ", new + " ")) if left != right)
    return f"...{old[max(0, at - 8) : at + 8]}... -> ...{new[max(0, at - 8) : at + 8]}..."


def _swap(text, row, after):
    return row.start, after.end, text[after.start : after.end] + text[row.end : after.start] + text[row.start : row.end]


def _other_values(text, rows):
    """For each row the nearest row of its macro behind it, or before it, that stands in the same column otherwise."""
    for place, row in enumerate(rows):
        around = rows[place + 1 :] + rows[:place][::-1]
        yield row, [
            next((each for each in around if column < len(each.columns)
                  and text[slice(*each.columns[column])] != text[slice(*row.columns[column])]), None)
            for column in range(len(row.columns))
        ]  # fmt: skip


def _of_rows(file, text):
    rows = rows_of(text)
    for macro in dict.fromkeys(row.macro for row in rows):
        same = [row for row in rows if row.macro == macro]
        for row, others in _other_values(text, same):
            for column in range(len(row.columns)):
                for start, end, new, label in _column_mutants(text, row, others[column], column):
                    yield macro, "table", start, end, new, label, True
        for row, after in zip(same, same[1:]):
            start, end, new = _swap(text, row, after)
            yield macro, "table", start, end, new, f"swapped with {' '.join(text[slice(*after.columns[0])].split())}", True
    for literal in re.finditer(r'^#define (\w+)\b[^(\n]*(?:\\\n[^\n]*)+', text, re.MULTILINE):
        for string in re.finditer(r'"[^"\n]*"', literal.group()):
            for new in changed_strings(string.group()):
                start = literal.start() + string.start()
                yield literal.group(1), "table", start, start + len(string.group()), new, changed_word(string.group(), new), True


def of_file(file, text):
    """All mutants of a file, in its order."""
    lines = text.splitlines()
    made = _of_rows(file, text) if file.endswith(".def") else _of_source(file, text)
    seen, mutants = {}, []
    for unit, kind, start, end, new, label, everywhere in made:
        line = text.count("\n", 0, start) + 1
        line_text = lines[line - 1].strip()
        occurrence = seen[(line_text, label)] = seen.get((line_text, label), 0) + 1
        change = label if occurrence == 1 else f"{label} (#{occurrence})"
        mutants.append(Mutant(file, unit, kind, line, line_text, change, start, end, new, everywhere))
    return mutants
