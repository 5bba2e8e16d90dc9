"""What the shells offer, and the manual tells, is what the program has."""

import fcntl
import os
import pathlib
import pty
import re
import select
import shlex
import struct
import subprocess
import termios
import time
import unittest

from rig.case import CommandCase
from rig.kelvane import program
from rig.processes import die_with_parent

ASSETS = pathlib.Path(__file__).resolve().parent.parent / "assets"
COMPLETIONS = ASSETS / "completions"

# Answers as bash asks, on the words of a command line, the last of which is being written.
_BASH = """. {file}; COMP_WORDS=({words}); COMP_CWORD=$((${{#COMP_WORDS[@]}} - 1))
compopt() {{ :; }}
_kelvane kelvane; printf '%s\\n' "${{COMPREPLY[@]}}"
"""


def options_of(text):
    return set(re.findall(r"(?<![\w-])--[a-z][a-z-]*", text))


class Zsh:
    """An interactive zsh, for only there its completion can be asked."""

    def __init__(self, environment):
        child, self._terminal = pty.fork()
        if child == 0:
            die_with_parent()
            os.execvpe("zsh", ["zsh", "-f", "-i"], {**environment, "TERM": "dumb"})
        fcntl.ioctl(self._terminal, termios.TIOCSWINSZ, struct.pack("HHHH", 200, 200, 0, 0))
        self._child = child
        self._write(f"fpath=({COMPLETIONS} $fpath); autoload -Uz compinit; compinit -u -D\n")

    def offers(self, line, words):
        """Waits until it has shown all of the words for that line."""
        # What was shown before ends with the answer to another command.
        self._write("\x15echo 'rea''dy'\n")
        self._read_until(["ready"])
        self._write(line + "\t")
        self._read_until(words)

    def close(self):
        os.close(self._terminal)
        os.waitpid(self._child, 0)

    def _write(self, text):
        os.write(self._terminal, text.encode())

    def _read_until(self, words, seconds=10):
        shown, deadline = "", time.monotonic() + seconds
        while missing := [word for word in words if word not in shown]:
            if not select.select([self._terminal], [], [], max(0, deadline - time.monotonic()))[0]:
                raise TimeoutError(f"zsh does not show {missing}, but {shown!r}")
            shown += os.read(self._terminal, 65536).decode(errors="replace")


class OfferedTest(CommandCase):
    def setUp(self):
        super().setUp()
        folder = pathlib.Path(program()).parent
        self.environment["PATH"] = f"{folder}:{self.environment['PATH']}"
        self.commands = self.commands_of_the_program()
        self.settings = [line.split(None, 2)
                         for line in self.run_kelvane("settings", "list").stdout.splitlines()]

    def test_bash(self):
        self.check(self.bash)

    def test_fish(self):
        self.check(self.fish)

    def test_zsh(self):
        zsh = Zsh(self.environment)
        self.addCleanup(zsh.close)
        for line, words in self.expected().items():
            if len(words) > 1:  # A single one is written at once, without being shown.
                zsh.offers(line, words)

    def test_manual(self):
        manual = (ASSETS / "kelvane.1").read_text()
        for line, words in self.expected().items():
            for word in words:
                said = f"Fl {word[1:]}" if word.startswith("--") else word
                self.assertRegex(manual, rf"(?<![\w-]){re.escape(said)}(?![\w-])", line)

    def check(self, offered):
        for line, words in self.expected().items():
            with self.subTest(line=line):
                self.assertLessEqual(words, offered(line))
        self.assertNotIn("quit", offered("kelvane settings set "))
        self.assertNotIn("true", offered("kelvane settings get largeIcon "))

    def expected(self):
        """What must be offered, by what is on the line."""
        expected = {"kelvane ": set(self.commands)}
        for command in ["", *self.commands]:
            options = options_of(self.run_kelvane(*command.split(), "--help").stdout)
            expected[f"kelvane {command} --".replace("  ", " ")] = options
        expected["kelvane settings "] = {"list", "get", "set"}
        expected["kelvane settings get "] = {key for key, _, _ in self.settings}
        expected["kelvane settings set "] = {key for key, _, _ in self.settings}
        for key, kind, _ in self.settings:
            if kind != "levels":  # Of these there is no end.
                expected[f"kelvane settings set {key} "] = self.values_of(key)
        return expected

    def values_of(self, key):
        """The values that it names when it refuses one."""
        refusal = self.run_kelvane("settings", "set", key, "no such value", code=2).stderr
        values = refusal.split("which takes ")[1].strip().rstrip(".")
        return set(re.split(r", or |, | or ", values))

    def commands_of_the_program(self):
        listed = self.run_kelvane("--help").stdout.split("Subcommands:\n")[1]
        commands = re.findall(r"^  ([a-z]+) ", listed, re.MULTILINE)
        self.assertGreater(len(commands), 5)
        return commands

    def bash(self, line):
        words = line.split() + ([""] if line.endswith(" ") else [])
        script = _BASH.format(file=shlex.quote(str(COMPLETIONS / "kelvane.bash")),
                              words=shlex.join(words))
        return self.said(["bash", "--norc", "-c", script])

    def fish(self, line):
        file = COMPLETIONS / "kelvane.fish"
        script = f"source {shlex.quote(str(file))}; complete -C {shlex.quote(line)}"
        return {offer.split("\t")[0] for offer in self.said(["fish", "--no-config", "-c", script])}

    def said(self, command):
        done = subprocess.run(command, env=self.environment, capture_output=True, text=True,
                              timeout=20, check=True)
        self.assertEqual(done.stderr, "", command)
        return set(done.stdout.splitlines())


if __name__ == "__main__":
    unittest.main()
