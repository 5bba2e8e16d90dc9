"""The fake /sys: a umockdev testbed, in a process of its own.

The sender of uevents must itself see the fake tree, so this runs under umockdev's preload library,
which nothing else of the rig needs. It reads one JSON list per line, ["set", "BAT0", "capacity",
"40"], and answers each with one line: null, or the text of what went wrong. Its first line is the
root of the tree, which goes when it ends.
"""

import json
import sys

import gi

gi.require_version("UMockdev", "1.0")
from gi.repository import UMockdev


class Testbed:
    def __init__(self):
        self._testbed = UMockdev.Testbed.new()
        self._devices = {}
        self.root = self._testbed.get_root_dir()

    def add(self, name, attributes):
        flat = [word for pair in attributes.items() for word in pair]
        self._devices[name] = self._testbed.add_device("power_supply", name, None, flat, [])
        self._testbed.uevent(self._devices[name], "add")

    def remove(self, name):
        device = self._devices.pop(name)
        self._testbed.uevent(device, "remove")
        self._testbed.remove_device(device)

    def set(self, name, attribute, value):
        self._testbed.set_attribute(self._devices[name], attribute, value)

    def changed(self, name):
        self._testbed.uevent(self._devices[name], "change")


def main():
    testbed = Testbed()
    print(json.dumps(testbed.root), flush=True)
    for line in sys.stdin:
        request, *arguments = json.loads(line)
        try:
            answer = getattr(testbed, request)(*arguments)
        except Exception as error:  # The asker raises it on its side.
            answer = repr(error)
        print(json.dumps(answer), flush=True)


if __name__ == "__main__":
    main()
