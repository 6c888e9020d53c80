"""Holds the tree to docs/architecture.md: architecture.py ROOT

Who may include whom is read from the table of the page. Besides, what the page names is there, and functions,
files and circles of includes keep within their limits.
"""
import os.path
import pathlib
import re
import sys

LONGEST_FUNCTION, LONGEST_FILE = 40, 330  # lines; of a function from brace to brace, as clang-tidy counts
MANUAL = "include/qm_sdk_dual.h"  # of every call; as long as it has to be
NO_CODE = re.compile(r'//.*|/\*[\s\S]*?\*/|R"\([\s\S]*?\)"|"(?:\\.|[^"\\\n])*"'
                     r"|'(?:\\[^']+|[^'\\\n])'|^#.*(?:\\\n.*)*", re.M)
NO_FUNCTION = re.compile(r"(namespace|class|struct|union|enum|extern)\b")
HEAD_END = re.compile(r"(\)|\]|\b(noexcept|const|override|mutable|try)|->[\s\w:<>,&*]+)$")  # of a function, a lambda


def parent(path):
    return path.rpartition("/")[0]


def unit_of(path):  # a header and its source are one
    return path if path.endswith(".hpp") else path.rpartition(".")[0]


def function_lengths(text):
    code = NO_CODE.sub(lambda match: re.sub(r"[^\n]", " ", match[0]), text)
    begin, braces = 0, []  # where the statement at hand begins; the first line of functions, None for other braces
    for mark in re.finditer(r"[{};]|\b(public|protected|private):", code):
        head, line = code[begin:mark.start()].strip(), code.count("\n", 0, mark.start()) + 1
        if mark[0] == "{":
            is_head = HEAD_END.search(head) and not NO_FUNCTION.match(head)
            is_head = is_head or (not head and code[begin - 1 : begin] == "}")  # behind : m_member{value}
            braces.append(line if is_head and not any(braces) else None)
        elif mark[0] == "}" and (first := braces.pop()):
            yield first, line - first
        begin = mark.end()


def reached_from(unit, units):
    seen, left = set(), [unit]
    while left:
        new = units[left.pop()] - seen
        seen, left = seen | new, left + list(new)
    return seen


def faults(root):
    page = (root / "docs/architecture.md").read_text()
    for path in sorted(set(re.findall(r"`((?:docs|include|src|tests|tools)/[\w./]+)`", page))):
        if not (root / path).exists(): yield f"docs/architecture.md names {path}, which is not there"
    allowed = {}
    for folder, others in re.findall(r"^\| `([\w./]+)` \|[^|]*\|([^|]*)\|$", page, re.M):
        allowed[folder] = {folder} | set(re.findall(r"`([\w./]+)`", others))
        for other in sorted(allowed[folder] - allowed.keys()):
            yield f"docs/architecture.md lets {folder} include {other}, which has no row above it"

    files = {path.relative_to(root).as_posix(): path.read_text() for top in ("include", "src", "tools")
             for path in sorted((root / top).rglob("*")) if path.suffix in (".h", ".hpp", ".cpp")}
    units = {unit_of(path): set() for path in files}
    room = lambda path: path if path in allowed else parent(path)
    for path, text in files.items():
        if (lines := text.count("\n")) > LONGEST_FILE and path != MANUAL: yield f"{path} has {lines} lines"
        for first, length in function_lengths(text):
            if length > LONGEST_FUNCTION: yield f"{path}:{first}: a function of {length} lines"
        for name in re.findall(r'^\s*#\s*include\s*["<]([^">]+)', text, re.M):
            places = (os.path.normpath(f"{place}/{name}") for place in (parent(path), "src", "include", "tools"))
            if not (target := next((place for place in places if place in files), None)): continue
            units[unit_of(path)] |= {unit_of(target)} - {unit_of(path)}
            if room(target) not in allowed.get(room(path), ()):
                yield f"{path} includes {name}: {room(path)} may not include {room(target)}"

    reached = {unit: reached_from(unit, units) for unit in units}
    circles = {" ".join(sorted(other for other in reached[unit] if unit in reached[other]))
               for unit in units if unit in reached[unit]}
    for circle in sorted(circles): yield f"these include one another: {circle}"


sys.exit("\n".join(faults(pathlib.Path(sys.argv[1]))) or 0)
