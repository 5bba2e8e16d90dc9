"""Reads the metadata package's declarations (TypeScript) and brings types of both sides to kinds.

The package was generated from a real SDK of macOS 26 on arm64. It keeps neither widths of numbers
nor nullability, and joins a selector's parts: addItem:at: is addItemAt.
"""
import dataclasses
import re

NUMBERS = {
    "int", "unsigned int", "long", "unsigned long", "long long", "unsigned long long", "short", "unsigned short",
    "signed char", "unsigned char", "float", "double", "size_t",
}


@dataclasses.dataclass
class Member:
    is_static: bool
    is_readonly: bool
    parameters: object  # a list of types, or None for a property
    type: str


@dataclasses.dataclass
class Entry:
    parents: list
    members: dict = dataclasses.field(default_factory=dict)  # name: [Member]


@dataclasses.dataclass
class Metadata:
    entries: dict = dataclasses.field(default_factory=dict)  # class or protocol
    functions: dict = dataclasses.field(default_factory=dict)  # name: ([parameters], type)
    constants: dict = dataclasses.field(default_factory=dict)
    enumerations: dict = dataclasses.field(default_factory=dict)
    files: dict = dataclasses.field(default_factory=dict)  # name: the framework that declares it


HEAD = re.compile(r"declare (?:abstract )?(?:class|interface) (\w+)(<.*?>)? ?(.*)\{")
MEMBER = re.compile(r"  (static )?(readonly )?(get |set )?([\w$]+)\??(?:<.*?>(?=\())?(\(.*\))?: (.*);$")
SETTER = re.compile(r"  (static )?set (\w+)\(")
CONSTANT = re.compile(r"declare const (\w+): (.*);$")
FUNCTION = re.compile(r"declare function (\w+)(?:<.*?>(?=\())?(\(.*\)): (.*);$")
ENUMERATION = re.compile(r"declare const (\w+): \{$")


def split_list(text):
    """Parts of a comma-separated list, as far as brackets are closed."""
    parts, depth, part = [], 0, ""
    for index, char in enumerate(text):
        depth += char in "(<[{"
        depth -= char in ")]}" or char == ">" and text[index - 1] != "="
        if char == "," and depth == 0:
            parts.append(part.strip())
            part = ""
        else:
            part += char
    return parts + [part.strip()] if part.strip() else parts


def parameters_of(text):
    parts = [part.split(":", 1) for part in split_list(text[1:-1])]
    return [kind.strip() for name, kind in parts if name != "this"]


def parse(text, framework, into):
    """Adds one file's declarations."""
    entry = values = None
    for line in text.splitlines():
        if line == "}" or line == "};":
            entry = values = None
        elif values is not None:
            if found := re.match(r"  (\w+): (-?\d+)", line):
                values[found[1]] = int(found[2])
        elif entry is not None:
            if found := MEMBER.match(line):
                static, readonly, accessor, name, parameters, kind = found.groups()
                known = entry.members.setdefault(name, [])
                # A property that takes more than it gives is written as two accessors.
                if accessor:
                    known.append(Member(bool(static), True, None, kind))
                elif parameters:
                    known.append(Member(bool(static), False, parameters_of(parameters), kind))
                else:
                    known.append(Member(bool(static), bool(readonly), None, kind))
            elif found := SETTER.match(line):
                for member in entry.members.get(found[2], []):
                    member.is_readonly = False
        elif found := ENUMERATION.match(line):
            values = into.enumerations.setdefault(found[1], {})
            into.files.setdefault(found[1], framework)
        elif found := HEAD.match(line):
            parents = re.sub(r"<[^<>]*(?:<[^<>]*>)*[^<>]*>", "", found[3])
            parents = re.sub(r"\b(extends|implements)\b", ",", parents)
            parents = [name.strip() for name in parents.split(",") if name.strip()]
            entry = into.entries.setdefault(found[1], Entry([]))
            entry.parents += [name for name in parents if name not in entry.parents]
            into.files.setdefault(found[1], framework)
        elif found := FUNCTION.match(line):
            into.functions[found[1]] = (parameters_of(found[2]), found[3])
            into.files.setdefault(found[1], framework)
        elif found := CONSTANT.match(line):
            into.constants[found[1]] = found[2]
            into.files.setdefault(found[1], framework)


def read(folder):
    """Everything of the package."""
    metadata = Metadata()
    for path in sorted(folder.glob("*.d.ts")):
        parse(path.read_text(encoding="utf-8"), path.name[: -len(".d.ts")], metadata)
    return metadata


def lookup(metadata, owner, name):
    """The members of this name of a class or protocol or of what it inherits."""
    seen, queue = set(), [owner]
    while queue:
        each = queue.pop(0)
        if each in seen or each not in metadata.entries:
            continue
        seen.add(each)
        entry = metadata.entries[each]
        if name in entry.members:
            return entry.members[name]
        queue += entry.parents
    return []


def kind_of_ours(text, declarations, depth=0):
    """What kind of thing a type of clang's is, in words that the other side has too."""
    text = re.sub(r"\b(_Nonnull|_Nullable|_Null_unspecified|__strong|__weak|__autoreleasing|__unsafe_unretained|"
                  r"const|__kindof|struct|enum|NS_NOESCAPE)\b", "", text)
    text = re.sub(r"__attribute__\(\(.*?\)\)", "", text)
    text = " ".join(text.split()).replace("* ", "*")
    if "(^" in text:
        head, tail = re.split(r"\(\^\s*\)", text, maxsplit=1)
        inside = "" if tail.strip() == "(void)" else tail.strip()[1:-1]
        parts = [kind_of_ours(part, declarations) for part in split_list(inside)]
        return "block", kind_of_ours(head, declarations), tuple(parts)
    if "(*)" in text:
        return ("function",)
    if text in ("void", "oneway void"):
        return ("void",)
    if text in ("BOOL", "bool", "_Bool"):
        return ("boolean",)
    if text in ("instancetype",):
        return ("self",)
    if text in ("SEL", "NSString *", "char *"):
        return ("string",)
    if text.endswith("**") or re.match(r"(id|BOOL) ?\*", text):
        return ("pointer",)
    if re.match(r"(id|Class)\b", text) or text == "Protocol *" or text.endswith("Ref"):
        return ("object",)
    # The parameters of generic classes.
    if re.match(r"(ObjectType|KeyType|AnchorType)\b", text):
        return ("object",)
    if found := re.match(r"(\w+)(?:<.*>)? ?\*$", text):
        if found[1] in declarations.names:
            return "class", found[1]
        return ("pointer",)
    if text.endswith(("*", "]")):
        return ("pointer",)
    if text in NUMBERS:
        return ("number",)
    if text in declarations.enumerations:
        return ("number",)
    if text in declarations.typedefs and depth < 8 and not declarations.typedefs[text].startswith("struct "):
        return kind_of_ours(declarations.typedefs[text], declarations, depth + 1)
    return "struct", text


def agree(ours, theirs, enclosing):
    """Whether a kind of ours and a type of the metadata can be the same."""
    for choice in theirs.split(" | ") if "=>" not in theirs else [theirs]:
        if one_agrees(ours, choice.strip(), enclosing):
            return True
    return False


def one_agrees(ours, theirs, enclosing):
    theirs = theirs.strip()
    if "=>" in theirs:
        parameters, result = theirs.rsplit(" => ", 1)
        result = re.sub(r" \| null$", "", result)
        if ours[0] == "function":
            return True
        if ours[0] != "block":
            return False
        parts = parameters_of(parameters)
        return (len(parts) == len(ours[2]) and agree(ours[1], result, enclosing)
                and all(agree(mine, part, enclosing) for mine, part in zip(ours[2], parts)))
    bare = re.sub(r"<.*", "", theirs)
    match ours[0]:
        case "void" | "boolean" | "string":
            return theirs == ours[0] or ours[0] == "string" and bare in ("interop.PointerConvertible", "interop.Pointer")
        case "number":
            return theirs == "number" or bare == "interop.Enum"
        case "self":
            return theirs in ("this", enclosing) or theirs.startswith("InstanceType<")
        case "class":
            return bare == ours[1] or theirs == "this" and ours[1] == enclosing
        case "object":
            # A protocol, a Core Foundation type, a parameter of a generic class, anything.
            return bare not in ("number", "boolean", "void", "string")
        case "pointer":
            return bare in ("interop.PointerConvertible", "interop.Pointer", "interop.Object", "string")
        case "struct":
            return bare.lstrip("_") == ours[1].lstrip("_") or bare.startswith("CG") and bare[2:] == ours[1][2:]
    return False
