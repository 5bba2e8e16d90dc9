"""Reads Free Pascal's cocoaint: declarations of macOS 10.10 with exact number types and values."""
import re

MACHINE = {
    "single": "float", "double": "double", "CGFloat": "double", "NSTimeInterval": "double", "CFTimeInterval": "double",
    "boolean": "boolean", "Boolean": "boolean", "ObjCBOOL": "boolean", "cint": "int", "cuint": "unsigned int",
    "NSInteger": "long", "NSUInteger": "unsigned long", "clonglong": "long", "culonglong": "unsigned long",
    "clong": "long", "culong": "unsigned long", "unichar": "unsigned short", "cushort": "unsigned short",
}
HEAD = re.compile(r"^  (\w+) = objc(class|protocol|category) external(?: name '[^']*')?(?: \((\w+)[^)]*\))?")
METHOD = re.compile(r"^\s+(class )?(?:function|procedure) \w+ ?(?:\(([^)]*)\))?(?:: (\w+))?; message '([^']+)'")
ALIAS = re.compile(r"^  (\w+) = (\w+);$")
VALUE = re.compile(r"^  (\w+) = (-?\d+|\$?[0-9A-Fa-f]+|1 shl (\d+))(?: deprecated.*)?;$")


class Pascal:
    def __init__(self, folder):
        self.methods = {}  # (class, selector, is class method): ([parameter types], result type)
        self.parents, self.aliases, self.values, self.selectors = {}, {}, {}, set()
        for path in sorted(folder.rglob("*.inc")) if folder else ():
            self.read(path.read_text(encoding="latin-1"))

    def read(self, text):
        owner = None
        for line in text.splitlines():
            if found := HEAD.match(line):
                name, kind, parent = found.groups()
                owner = parent if kind == "category" else name
                if kind == "class":
                    self.parents[name] = parent
            elif found := METHOD.match(line):
                is_class, parameters, result, selector = found.groups()
                types = [part.rsplit(":", 1)[-1].strip() for part in parameters.split(";")] if parameters else []
                self.methods[owner, selector, bool(is_class)] = types, result or "void"
                self.selectors.add(selector)
            elif found := VALUE.match(line):
                text_, shift = found[2], found[3]
                self.values[found[1]] = 1 << int(shift) if shift else int(text_.lstrip("$"), 16 if "$" in text_ else 10)
            elif found := ALIAS.match(line):
                self.aliases[found[1]] = found[2]

    def method(self, owner, selector, is_class):
        while owner:
            if (owner, selector, is_class) in self.methods:
                return self.methods[owner, selector, is_class]
            owner = self.parents.get(owner)
        return None

    def machine(self, name):
        """The number type behind a name, or None when it is no number."""
        for _ in range(8):
            if name in MACHINE:
                return MACHINE[name]
            name = self.aliases.get(name)
        return None
