"""The small faults that can be injected into a source, as a programming error would.

sites(text) lists them. The source must be formatted by clang-format: blanks around an operator
distinguish it from template brackets and references.
"""

import re
from dataclasses import dataclass

TOKEN = re.compile(
    r"""(?P<blank>\s+)
      | (?P<comment>//[^\n]*|/\*.*?\*/)
      | (?P<directive>(?<![^\n])[ \t]*\#(?:\\\n|[^\n])*)
      | (?P<string>(?:u8|[uUL])?R"(?P<end>[^(\s]*)\(.*?\)(?P=end)"|(?:u8|[uUL])?"(?:\\.|[^"\\\n])*")
      | (?P<char>(?:u8|[uUL])?'(?:\\.|[^'\\\n])+')
      | (?P<number>\.?\d(?:[\w.']|[eEpP][+-])*)
      | (?P<word>[A-Za-z_]\w*)
      | (?P<sign><=>|<<=|>>=|->\*|\.\.\.|::|->|\+\+|--|&&|\|\||[-+*/%&|^!=<>]=|<<|.)""",
    re.VERBOSE | re.DOTALL,
)

COMPARISONS = {
    "==": ["!="],
    "!=": ["=="],
    "<": ["<=", ">"],
    ">": [">=", "<"],
    "<=": ["<", ">="],
    ">=": [">", "<="],
}
JOINTS = {"&&": "||", "||": "&&"}
CONSTANTS = {"true": "false", "false": "true"}
CLOSING = {"(": ")", "[": "]", "{": "}"}
NO_CALL = {"return", "throw", "delete", "using", "static_assert", "sizeof", "if", "for", "while",
           "switch", "case", "default", "do", "else", "goto", "break", "continue", "co_return"}


@dataclass(frozen=True)
class Change:
    """Replaces the text from start to end by new."""

    start: int
    end: int
    new: str

    def line(self, text):
        return text.count("\n", 0, self.start) + 1

    def apply(self, text):
        return text[: self.start] + self.new + text[self.end :]

    def words(self, text):
        """The changed lines before and after, with single blanks. They identify the change."""
        first = text.rfind("\n", 0, self.start) + 1
        last = text.find("\n", self.end)
        before = text[first : last if last >= 0 else len(text)]
        after = text[first : self.start] + self.new + text[self.end : first + len(before)]
        return " ".join(before.split()), " ".join(after.split())


@dataclass
class Token:
    kind: str
    text: str
    start: int
    end: int
    partner: int = -1  # of a bracket: the index of its partner
    code: bool = False  # inside a function body or an initialiser
    truth: bool = False  # the enclosing function returns bool


def tokens(text):
    found = []
    for match in TOKEN.finditer(text):
        if match.lastgroup == "end" or match.group("string"):
            kind = "string"
        else:
            kind = match.lastgroup
        if kind not in ("blank", "comment", "directive"):
            found.append(Token(kind, match.group(), match.start(), match.end()))
    pair(found)
    place(found)
    return found


def pair(found):
    opened = []
    for index, token in enumerate(found):
        if token.kind != "sign":
            continue
        if token.text in CLOSING:
            opened.append(index)
        elif token.text in CLOSING.values() and opened:
            token.partner = opened.pop()
            found[token.partner].partner = index


def lambda_opens(found, brace):
    """Whether the brace opens a lambda's body. Words before it are specifiers of the lambda."""
    index = brace - 1
    while index > 0 and found[index].kind == "word" or found[index].text in ("->", "::"):
        index -= 1
    if found[index].text == ")" and found[index].partner > 0:
        index = found[index].partner - 1
    return found[index].text == "]"


def place(found):
    """Sets code and truth of each token."""
    scopes = [(False, False)]
    head = 0  # start of the statement before a brace
    for index, token in enumerate(found):
        token.code, token.truth = scopes[-1]
        if token.text == "{" and token.kind == "sign":
            before = [each.text for each in found[head:index]]
            code, truth = scopes[-1]
            if code:
                if lambda_opens(found, index):
                    truth = before[-2:] == ["->", "bool"]
            elif not ({"namespace", "class", "struct", "union", "enum"} & set(before[:4])
                      and "(" not in before):
                code = True
                name = before.index("(") if "(" in before else 0
                truth = "bool" in before[:name] and "<" not in before[:name]
            scopes.append((code, truth))
            head = index + 1
        elif token.text == "}" and token.kind == "sign":
            if len(scopes) > 1:
                scopes.pop()
            head = index + 1
        elif token.text == ";":
            head = index + 1


def sites(text):
    """All possible changes of a source."""
    found = tokens(text)
    changes = []
    for index, token in enumerate(found):
        if token.kind == "number":
            changes += moved(found, index)
        elif token.code:
            changes += spaced(text, token)
            if token.kind == "word":
                changes += turned(found, index)
                changes += negated(text, found, index)
                changes += dropped(found, index)
            elif token.text == "?":
                changes += chosen(text, found, index)
    return changes


def moved(found, index):
    """Off by one: a number in code, or the value of a constant."""
    token = found[index]
    if not token.code and found[index - 1].text != "=":
        return []
    match = re.fullmatch(r"(0[xX])?([\da-fA-F']+?)([uUlLzZ]*)", token.text)
    if not match or (not match[1] and re.search("[a-fA-F]", match[2])):
        return []
    value = int(match[2].replace("'", ""), 16 if match[1] else 10)
    new = [value + 1] + ([value - 1] if value > 0 else [])
    form = "{}{:x}{}" if match[1] else "{}{}{}"
    return [
        Change(token.start, token.end, form.format(match[1] or "", each, match[3])) for each in new
    ]


def spaced(text, token):
    """Replaces a comparison by another one, and && by || and vice versa."""
    if token.kind != "sign" or not text[token.start - 1].isspace() or not text[token.end].isspace():
        return []
    if token.text in JOINTS:
        return [Change(token.start, token.end, JOINTS[token.text])]
    return [Change(token.start, token.end, new) for new in COMPARISONS.get(token.text, [])]


def turned(found, index):
    token = found[index]
    if token.text not in CONSTANTS:
        return []
    return [Change(token.start, token.end, CONSTANTS[token.text])]


def negated(text, found, index):
    """Negates the condition of an if, and the result of a function that returns bool."""
    token = found[index]
    if token.text == "if" and found[index + 1].text == "(":
        first, last = index + 2, found[index + 1].partner
        inner = at_depth(found, first, last)
        ends = [each for each in inner if found[each].text == ";"]
        if ends:
            first = ends[-1] + 1
        elif any(found[each].text == "=" for each in inner):
            return []  # a declaration
    elif token.text == "return" and token.truth:
        first = index + 1
        last = next(
            (each for each in at_depth(found, first, len(found)) if found[each].text == ";"), first
        )
        if last <= first + 1 and found[first].text in CONSTANTS:
            return []
    else:
        return []
    return negation(text, found, first, last) if first < last else []


def chosen(text, found, index):
    """Negates the condition of ?:."""
    first = index
    while first > 0:
        before = found[first - 1]
        if before.kind == "sign" and before.text in ")]}" and before.partner >= 0:
            first = before.partner
        elif before.text in ("(", "[", "{", ",", ";", "=", "+=", "return", "?", ":", "<<", "+"):
            break
        else:
            first -= 1
    return negation(text, found, first, index) if first < index else []


def negation(text, found, first, last):
    """Negates an expression; not a single comparison, which spaced() inverts."""
    signs = [found[each].text for each in at_depth(found, first, last)]
    if not {"&&", "||"} & set(signs) and {"==", "!="} & set(signs):
        return []
    start, end = found[first].start, found[last - 1].end
    return [Change(start, end, f"!({text[start:end]})")]


def at_depth(found, first, last):
    """The indices from first to last that are not inside nested brackets."""
    index = first
    while index < last:
        here = found[index]
        if here.partner > index:
            index = here.partner + 1
        else:
            yield index
            index += 1


def begins_statement(found, index):
    before = found[index - 1]
    if before.text == ")" and before.partner > 0:
        return found[before.partner - 1].text in ("if", "for", "while")
    return before.text in (";", "{", "}", "else")


def dropped(found, index):
    """Removes a call whose result is not used."""
    token = found[index]
    if token.text in NO_CALL or not begins_statement(found, index):
        return []
    at = index
    while at < len(found):
        here = found[at]
        if here.kind == "word":
            if at > index and found[at - 1].text not in ("::", ".", "->"):
                return []
        elif here.text in ("(", "["):
            at = here.partner
            if here.text == "(" and found[at + 1].text == ";":
                return [Change(token.start, found[at + 1].start, "")]
        elif here.text not in ("::", ".", "->"):
            return []
        at += 1
    return []
