"""Where a source can be changed in one place, and to what."""
import re
from dataclasses import dataclass

SKIPPED = re.compile(
    r'//[^\n]*|/\*.*?\*/|(?:u8|u|U|L)?R"(?P<mark>[^()\s]*)\(.*?\)(?P=mark)"|"(?:\\.|[^"\\\n])*"'
    r"|(?<![0-9A-Za-z_])'(?:\\.|[^'\\\n])+'|^[ \t]*#[^\n]*|\bstatic_assert\b[^;]*;", re.S | re.M)

OTHER_SIGN = {"<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "==", "&&": "||", "||": "&&",
              "+": "-", "-": "+", "true": "false", "false": "true", "min": "max", "max": "min"}

# A whole statement on one line that calls, sets or counts; a declaration has a blank before its name. What only makes
# room changes nothing that a test could see.
STATEMENT = re.compile(r"^(?P<indent> +)(?P<text>(?!return\b|throw\b|case\b|using\b|if\b|for\b|while\b|Q_\w+|[^\n]*"
                       r"\.(?:reserve|squeeze)\()(?:(?:\(void\))?[\w:.\->*\[\]<>]+\([^\n]*\);"
                       r"|[\w:.\->*\[\]<>()]+ [-+|&*/]?= [^\n]*;|[\w.\->]*(?:\+\+|--)[\w.\->]*;|break;|continue;))$",
                       re.M)
COMMON = {"std", "size", "static_cast", "int", "move", "at", "begin", "end", "QString"}
CHECK = re.compile(r"(?<!\w)if \((?P<what>[^\n]+)\) \{$", re.M)


@dataclass(frozen=True)
class Place:
    """One change: the characters of `path` from `start` to `end` become `text`."""
    path: str
    kind: str
    start: int
    end: int
    line: int
    was: str
    text: str


def hidden(source):
    """The source with blanks for everything that is no code, each line and column where it was."""
    return SKIPPED.sub(lambda found: re.sub(r"[^\n]", " ", found.group()), source)


def other_number(digits):
    value = int(digits.replace("'", ""))
    return "1" if value == 0 else "0" if value == 1 else str(value + 1)


def signs(code):
    """Comparisons, constants and what joins them; binary signs have a blank on both sides, brackets of templates do not."""
    for found in re.finditer(r"(?<= )(<=|>=|==|!=|<|>)(?= )", code):
        yield "comparison", found.start(), found.end(), OTHER_SIGN[found.group()]
    for found in re.finditer(r"(?<= )(&&|\|\|)(?= )", code):
        yield "logic", found.start(), found.end(), OTHER_SIGN[found.group()]
    for found in re.finditer(r"(?<=\()!(?=[\w(])|(?<= )!(?=[\w(])", code):
        yield "logic", found.start(), found.end(), ""
    for found in re.finditer(r"(?<=[\w)] )[+-](?= )|(?<=std::)(?:min|max)(?=\()", code):
        yield "arithmetic", found.start(), found.end(), OTHER_SIGN[found.group()]
    for found in re.finditer(r"\b(true|false)\b", code):
        yield "constant", found.start(), found.end(), OTHER_SIGN[found.group()]
    for found in re.finditer(r"(?<![\w.'])(\d[\d']*)(?![\w.'])", code):
        yield "constant", found.start(), found.end(), other_number(found.group())


def depend(one, other):
    """Whether the order of two neighbours can matter: they speak of the same, and not as two settings of different things."""
    names = [set(re.findall(r"[A-Za-z_]\w+", each["text"])) - COMMON for each in (one, other)]
    targets = [re.match(r"(\S+) [-+|&*/]?= ", each["text"]) for each in (one, other)]
    if all(targets) and not any(re.search(r"(?<![\w.])" + re.escape(target[1]) + r"(?!\w)", text["text"])
                                for target, text in zip(targets, (other, one))):
        return False
    if all(re.search(r"(?:^|[.>])(?:set\w*|connect)\(", each["text"]) for each in (one, other)):
        return False
    return one["indent"] == other["indent"] and bool(names[0] & names[1])


def statements(code):
    """Statements that are dropped, and neighbours that change their places."""
    before = None
    for found in STATEMENT.finditer(code):
        above = code[:found.start()].rstrip()
        if above and above[-1] not in ";{}:":
            continue
        yield "dropped statement", found.start("text"), found.end("text"), ""
        if before and before.end() + 1 == found.start() and depend(before, found):
            yield ("order", before.start("text"), found.end("text"),
                   (found.start("text"), found.end("text"), before.start("text"), before.end("text")))
        before = found


def checks(code):
    for found in CHECK.finditer(code):
        yield "dropped check", found.start("what"), found.end("what"), "false"
        yield "dropped check", found.start("what"), found.end("what"), "true"


def places(path, source):
    """All changes of one source. No two of them are the same."""
    code = hidden(source)
    for finder in (signs, statements, checks):
        for kind, start, end, text in finder(code):
            if kind == "order":
                second, first = text[:2], text[2:]
                text = source[slice(*second)] + source[first[1]:second[0]] + source[slice(*first)]
            was = source[start:end]
            if text != was:
                yield Place(path, kind, start, end, source.count("\n", 0, start) + 1, was, text)


def changed(source, place):
    return source[:place.start] + place.text + source[place.end:]


def shown(source, place):
    """The lines of the place before and after, on one line each."""
    first = source.rfind("\n", 0, place.start) + 1
    last = source.find("\n", place.end)
    was = source[first:last]
    now = source[first:place.start] + place.text + source[place.end:last]
    return " ".join(was.split()), " ".join(now.split())
