"""Keeps a part of the rig running for a shell: one command starts it, later ones use it.

The keeper is a background process that holds the part's context open and serves its methods on a
socket in the rig's directory.
"""

import json
import os
import pathlib
import signal
import socket
import sys
import tempfile


def directory():
    """Where the rig of this shell keeps its state."""
    default = pathlib.Path(tempfile.gettempdir()) / f"kelvane-rig-{os.getuid()}"
    return pathlib.Path(os.environ.get("KELVANE_RIG", default))


def is_kept(name):
    with socket.socket(socket.AF_UNIX) as client:
        return client.connect_ex(str(_socket_path(name))) == 0


def keep(name, make):
    """Starts `make()`, a context manager, in the background; returns when it is up."""
    path = _socket_path(name)
    if is_kept(name):
        sys.exit(f"{name} is running already; its socket is {path}")
    path.parent.mkdir(parents=True, exist_ok=True)
    path.unlink(missing_ok=True)
    reader, writer = os.pipe()
    if os.fork() == 0:
        os.close(reader)
        os._exit(_serve_in_background(path, make, writer))
    os.close(writer)
    with open(reader) as answer:
        wrong = answer.read()
    if wrong != "up":
        sys.exit(wrong or f"{name} did not start; see {path.parent / 'log'}")


def ask(name, method, *arguments):
    """Calls a method of the part that is kept under that name, or reads an attribute of it."""
    with socket.socket(socket.AF_UNIX) as client:
        try:
            client.connect(str(_socket_path(name)))
        except OSError:
            sys.exit(f"{name} is not running: start it first")
        client.sendall(json.dumps([method, *arguments]).encode() + b"\n")
        answer = json.loads(client.makefile().readline())
    if "error" in answer:
        sys.exit(f"{name}: {answer['error']}")
    return answer["result"]


def _socket_path(name):
    return directory() / f"{name}.socket"


def _serve_in_background(path, make, writer):
    os.setsid()
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(0))
    log = os.open(path.with_suffix(".log"), os.O_WRONLY | os.O_CREAT | os.O_APPEND)
    null = os.open(os.devnull, os.O_RDONLY)
    for ours, theirs in ((null, 0), (log, 1), (log, 2)):
        os.dup2(ours, theirs)
    with open(writer, "w") as report:
        try:
            part = make()
            part.__enter__()
        except Exception as error:
            report.write(f"{type(error).__name__}: {error}")
            return 1
        report.write("up")
    try:
        with socket.socket(socket.AF_UNIX) as server:
            server.bind(str(path))
            server.listen()
            _serve(server, part)
    finally:
        path.unlink(missing_ok=True)
        part.__exit__(None, None, None)
    return 0


def _serve(server, part):
    while True:
        client, _ = server.accept()
        with client:
            line = client.makefile().readline()
            if not line:
                continue
            method, *arguments = json.loads(line)
            answer = {"result": None}
            if method != "stop":
                try:
                    found = getattr(part, method)
                    answer["result"] = found(*arguments) if callable(found) else found
                except Exception as error:  # A caller's mistake must not end the desk.
                    answer = {"error": f"{type(error).__name__}: {error}"}
            client.sendall(json.dumps(answer).encode() + b"\n")
        if method == "stop":
            return
