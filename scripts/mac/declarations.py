"""Reads Kelvane's own declarations of the Mac's frameworks, as clang understands them.

Plain values; nothing here judges. `read` runs clang over every umbrella header, `parse` over a text.
"""
import dataclasses
import json
import pathlib
import re
import subprocess

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
SDK = ROOT / "build" / "mac" / "sdk"
FRAMEWORKS = ROOT / "cross" / "macos" / "frameworks"
# IOKit has no header of all headers.
HEADERS = {"IOKit": ["IOKit/IOKitLib.h", "IOKit/ps/IOPowerSources.h"]}


@dataclasses.dataclass
class Method:
    selector: str
    is_class: bool
    returns: str
    parameters: list
    is_accessor: bool = False


@dataclasses.dataclass
class Property:
    name: str
    is_class: bool
    type: str
    is_readonly: bool


@dataclasses.dataclass
class Class:
    """A class or a protocol."""
    name: str
    framework: str
    superclass: str = ""
    is_protocol: bool = False
    methods: list = dataclasses.field(default_factory=list)
    properties: list = dataclasses.field(default_factory=list)


@dataclasses.dataclass
class Declarations:
    classes: dict = dataclasses.field(default_factory=dict)
    protocols: dict = dataclasses.field(default_factory=dict)
    functions: dict = dataclasses.field(default_factory=dict)  # name: (framework, returns, [parameters])
    variables: dict = dataclasses.field(default_factory=dict)  # name: (framework, type)
    enumerations: dict = dataclasses.field(default_factory=dict)  # name: {constant: value}
    underlying: dict = dataclasses.field(default_factory=dict)  # name of an enumeration: its type
    constants: dict = dataclasses.field(default_factory=dict)  # name: number, of those that have no symbol
    names: set = dataclasses.field(default_factory=set)  # of classes, those only named included
    typedefs: dict = dataclasses.field(default_factory=dict)  # name: type; of every header read


def framework_of(file):
    """The framework that a header is of, or None when it is no header of ours."""
    if ".framework/" in file:
        return file.split(".framework/")[0].rsplit("/", 1)[-1]
    return "libobjc" if file.endswith("objc/NSObject.h") else None


def type_of(node):
    return node.get("qualType", "") if node else ""


def constant_value(node):
    """The value of an enumeration's constant, or None when it just follows the one before."""
    if "value" in node:
        return int(node["value"])
    for child in node.get("inner", []):
        if (value := constant_value(child)) is not None:
            return value
    return None


def number_of(node):
    """The value that a constant is given, or None when it is no plain number."""
    if node["kind"] in ("IntegerLiteral", "FloatingLiteral"):
        return float(node["value"])
    values = [number_of(child) for child in node.get("inner", []) if "Expr" in child["kind"] or
              child["kind"] in ("IntegerLiteral", "FloatingLiteral", "UnaryOperator")]
    if len(values) != 1 or values[0] is None:
        return None
    return -values[0] if node.get("opcode") == "-" else values[0]


class Reader:
    """Walks clang's JSON in its order: a node names its file only where that changes."""

    def __init__(self, framework_of_file):
        self.found = Declarations()
        self.framework_of_file = framework_of_file
        self.file = ""

    def follow(self, location):
        if "file" in location:
            self.file = location["file"]
        for key in ("spellingLoc", "expansionLoc", "begin", "end"):
            if key in location:
                self.follow(location[key])

    def walk(self, node):
        for child in node.get("inner", []):
            self.follow(child.get("loc", {}))
            framework = self.framework_of_file(self.file)
            if child["kind"] == "ObjCInterfaceDecl":
                self.found.names.add(child["name"])
            if child["kind"] == "TypedefDecl":
                self.found.typedefs[child["name"]] = type_of(child["type"])
            if framework and not child.get("isImplicit"):
                self.take(child, framework)
            self.skip(child)

    def skip(self, node):
        self.follow(node.get("range", {}))
        for child in node.get("inner", []):
            self.follow(child.get("loc", {}))
            self.skip(child)

    def take(self, node, framework):
        kind, name, found = node["kind"], node.get("name", ""), self.found
        superclass = node.get("super", {}).get("name", "")
        if kind == "ObjCInterfaceDecl" and (superclass or name == "NSObject" and "inner" in node):
            entry = found.classes.setdefault(name, Class(name, framework))
            entry.superclass = superclass
            # A declaration ahead of the class, for another framework's use, has its superclass too.
            if "inner" in node:
                entry.framework = framework
            self.members(node, entry)
        elif kind == "ObjCCategoryDecl":
            owner = node["interface"]["name"]
            self.members(node, found.classes.setdefault(owner, Class(owner, framework)))
        elif kind == "ObjCProtocolDecl" and "inner" in node:
            self.members(node, found.protocols.setdefault(name, Class(name, framework, is_protocol=True)))
        elif kind == "FunctionDecl" and node.get("storageClass") != "static":
            parameters = [type_of(p["type"]) for p in node.get("inner", []) if p["kind"] == "ParmVarDecl"]
            found.functions[name] = (framework, type_of(node["type"]).split("(")[0].strip(), parameters)
        elif kind == "VarDecl" and node.get("storageClass") == "static":
            found.constants[name] = number_of(node)
        elif kind == "VarDecl" and node.get("storageClass") == "extern":
            found.variables[name] = (framework, type_of(node["type"]))
        elif kind == "EnumDecl" and name:
            found.underlying[name] = type_of(node.get("fixedUnderlyingType"))
            values, last = found.enumerations.setdefault(name, {}), -1
            for constant in node.get("inner", []):
                if constant["kind"] == "EnumConstantDecl":
                    given = constant_value(constant)
                    last = last + 1 if given is None else given
                    values[constant["name"]] = last

    @staticmethod
    def members(node, entry):
        for child in node.get("inner", []):
            if child["kind"] == "ObjCMethodDecl":
                parameters = [type_of(p["type"]) for p in child.get("inner", []) if p["kind"] == "ParmVarDecl"]
                entry.methods.append(Method(child["name"], not child["instance"], type_of(child["returnType"]),
                                            parameters, bool(child.get("isImplicit"))))
            elif child["kind"] == "ObjCPropertyDecl":
                entry.properties.append(Property(child["name"], bool(child.get("class")), type_of(child["type"]),
                                                 bool(child.get("readonly"))))


def ast(text, arguments):
    command = ["clang-19", "-x", "objective-c", "-fobjc-arc", "-fblocks", "-fsyntax-only", "-Xclang", "-ast-dump=json",
               *arguments, "-"]
    done = subprocess.run(command, input=text, capture_output=True, text=True, check=False)
    if done.returncode != 0:
        raise SystemExit(f"declarations do not compile:\n{done.stderr}")
    return json.loads(done.stdout)


def umbrella():
    """A text that includes every framework's declarations."""
    names = sorted(folder.name for folder in FRAMEWORKS.iterdir() if folder.is_dir())
    headers = [header for name in names for header in HEADERS.get(name, [f"{name}/{name}.h"])]
    return "".join(f"#import <{header}>\n" for header in headers)


def read():
    """The whole of cross/macos/frameworks. The metadata was made on arm64, so it is read for that."""
    arguments = ["-target", "arm64-apple-macos11.0", "-isysroot", str(SDK)]
    reader = Reader(framework_of)
    reader.walk(ast(umbrella(), arguments))
    return reader.found


def parse(text):
    """The declarations of a text that includes nothing; all of them count as Foundation's."""
    reader = Reader(lambda file: "Foundation")
    reader.walk(ast(text, ["-target", "arm64-apple-macos11.0"]))
    return reader.found


def since(names):
    """{name: (major, minor)} of those classes, functions and constants that say since when they are."""
    command = ["clang-19", "-x", "objective-c", "-fobjc-arc", "-fblocks", "-fsyntax-only", "-fno-color-diagnostics",
               "-Xclang", "-ast-dump", "-target", "arm64-apple-macos11.0", "-isysroot", str(SDK), "-"]
    done = subprocess.run(command, input=umbrella(), capture_output=True, text=True, check=True)
    found, name = {}, None
    for line in done.stdout.splitlines():
        if top := re.match(r"[|`]-(ObjCInterfaceDecl|FunctionDecl|VarDecl) .*", line):
            # The name stands before the type, or last.
            words = top[0].split(" '")[0].split()
            name = words[-1]
        elif re.match(r"[|`]-", line):
            name = None
        elif name and (attribute := re.match(r"[| ] [|`]-AvailabilityAttr .* macos (\d+)(?:\.(\d+))?", line)):
            if name in names:
                found[name] = int(attribute[1]), int(attribute[2] or 0)
    return found
