"""Finds in a C++ source the functions and the tables whose values can be changed."""

import re
from typing import NamedTuple

TOKEN = re.compile(
    r"""
    (?P<comment>//[^\n]*|/\*.*?\*/)
  | (?P<directive>^[ \t]*\#(?:\\\n|[^\n])*)
  | (?P<string>(?:u8|u|U|L)?"(?:\\.|[^"\\\n])*")
  | (?P<char>(?:u8|u|U|L)?'(?:\\.|[^'\\\n])+')
  | (?P<number>(?:\d|\.\d)(?:[eEpP][+-]|['\w.])*)
  | (?P<name>[A-Za-z_]\w*)
  | (?P<operator><<=|>>=|<=>|->\*|\.\.\.|::|->|<<|>>|<=|>=|==|!=|&&|\|\||\+\+|--|[-+*/%&|^]=|[^\s\w])
    """,
    re.VERBOSE | re.DOTALL | re.MULTILINE,
)


class Token(NamedTuple):
    kind: str
    text: str
    start: int
    end: int


class Unit(NamedTuple):
    """A function, or a table or constant: its name, its kind, its tokens, and those that stand before its braces."""

    name: str
    kind: str
    tokens: list
    head: list


def tokenize(text):
    return [
        Token(match.lastgroup, match.group(), match.start(), match.end())
        for match in TOKEN.finditer(text)
        if match.lastgroup not in ("comment", "directive")
    ]


def _first(texts, wanted):
    """The place of the first token `wanted` that does not belong to the name of an operator function."""
    for place, text in enumerate(texts):
        if text == wanted and (place == 0 or texts[place - 1] != "operator"):
            return place
    return len(texts)


def _name_before(texts, place):
    """The qualified name that ends before a place, such as Property::operator==."""
    operator = next((at for at in range(max(0, place - 3), place) if texts[at] == "operator"), None)
    begin = place - 1 if operator is None else operator
    while begin > 0 and (texts[begin - 1] in ("::", "~") or (texts[begin] in ("::", "~") and texts[begin - 1].isidentifier())):
        begin -= 1
    return "".join(texts[begin:place])


def _opening(head):
    """What a brace opens behind these tokens: its kind and its name."""
    texts = [token.text for token in head]
    paren, equals = _first(texts, "("), _first(texts, "=")
    if "namespace" in texts or texts[:1] == ["extern"]:
        return "scope", ""
    if "enum" in texts or "static_assert" in texts:
        return "other", ""
    if paren == len(texts) and any(word in texts for word in ("class", "struct", "union")) and equals == len(texts):
        return "scope", ""
    if paren < equals:
        return "function", _name_before(texts, paren)
    end = min(equals, _first(texts, "["))
    return "table", texts[end - 1] if end else ""


def _declaration(head):
    """The name of a constant, or of a function with default arguments, that is declared without braces; or none."""
    texts = [token.text for token in head]
    if not texts or "static_assert" in texts or "enum" in texts or texts[0] in ("using", "friend", "template", "typedef", "extern", "QUENZO_SETTER_TEXTS"):
        return None
    if texts[-2:] == ["=", "0"]:
        return None
    if not any(token.kind in ("number", "string") or token.text in ("true", "false") for token in head):
        return None
    return _name_before(texts, min(_first(texts, "("), _first(texts, "="), _first(texts, "[")))


def units(text):
    """The functions and tables of a source, in its order."""
    tokens = tokenize(text)
    found, stack, head_start, last_name = [], [], 0, ""
    opened_at, opened_head = 0, []
    for place, token in enumerate(tokens):
        declaring = not stack or stack[-1] == "scope"
        if token.text == "{":
            if not declaring:
                stack.append("inner")
                continue
            opened_head = tokens[head_start:place]
            kind, name = _opening(opened_head)
            last_name = name or last_name
            stack.append(kind)
            opened_at = place
            head_start = head_start if kind == "other" else place + 1
        elif token.text == "}" and stack:
            kind = stack.pop()
            if kind in ("function", "table"):
                found.append(Unit(last_name, kind, tokens[opened_at : place + 1], opened_head))
            if kind != "other" and (not stack or stack[-1] == "scope"):
                head_start = place + 1
        elif token.text == ";" and declaring:
            head = tokens[head_start:place]
            name = _declaration(head)
            if name:
                found.append(Unit(name, "table", head + [token], head))
            head_start = place + 1
        elif token.text == ":" and declaring and tokens[place - 1].text in ("public", "private", "protected"):
            head_start = place + 1
    return found
