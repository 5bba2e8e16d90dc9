"""The window program's own menu: its keys, its alternates, where it comes up and how it ends."""

import re
import unittest

from rig.processes import wait_until
from rig.window_case import unless_gone
from rig.window_program_case import WindowProgramCase


def line(number, title, **fields):
    return {"line": number, "title": title, **fields}


MENU = [
    line(0, "", attributedTitle={"runs": [{"text": "57%", "fontSize": 15}]}, isEnabled=False),
    line(1, "", kind="placeholder"),
    line(2, "Condition: Good", isEnabled=False, isAlternate=True, keyEquivalent={"option": True}),
    line(3, "", kind="separator"),
    line(4, "Preferences…", keyEquivalent={"key": ",", "command": True}),
    line(5, "More", submenu=[line(6, "Battery"), line(7, "", kind="separator"), line(8, "About")]),
    line(9, "", kind="separator"),
    line(10, "", kind="separator"),
]


class MenuWindowTest(WindowProgramCase):
    def show(self, number=1, anchor=(640, 300)):
        self.peer.send("menu", menu=number, lines=MENU, anchor=anchor)
        self.seen.find("menu", "Kelvane")

    def items(self):
        """What is shown, separators as "-", the line that is lit up in brackets."""
        menu = self.seen.look("menu", "Kelvane")
        lines = [each for each in menu.descendants() if each.role in ("menu item", "separator")]
        texts = ["-" if each.role == "separator" else each.name for each in lines]
        return [f"[{text}]" if each.is_in("focused") else text
                for text, each in zip(texts, lines)]

    def wait_for_items(self, *expected):
        wait_until(lambda: unless_gone(self.items) == list(expected),
                   lambda: f"{expected}: {self.items()}", 5)

    def test_keys(self):
        self.start()
        self.show()
        self.wait_for_items("57%", "-", "Preferences…", "More")
        closed = ["57%", "-", "Preferences…", "More"]
        opened = [*closed, "Battery", "-", "About"]
        for keys, lines, lit in [
            (["Up"], closed, "More"),
            (["Down"], closed, "Preferences…"),
            (["Right"], closed, "Preferences…"),
            (["End", "Home", "m"], closed, "More"),
            (["Right"], opened, "Battery"),
            (["Down"], opened, "About"),
            (["Down"], opened, "Preferences…"),
            (["b", "Left"], closed, "More"),
            (["Return"], opened, "Battery"),
            (["Up", "space"], closed, "More"),
        ]:
            with self.subTest(keys):
                self.desk.key(*keys, window="Kelvane")
                self.wait_for_items(*(f"[{each}]" if each == lit else each for each in lines))
        self.desk.hold("Alt_L")
        self.wait_for_items("57%", "Condition: Good", "-", "Preferences…", "[More]")
        self.desk.hold("Alt_L", False)
        self.wait_for_items("57%", "-", "Preferences…", "[More]")
        self.assert_quiet()

    def test_ends(self):
        tree = {"kind": "text", "id": "text", "label": "Behind the menu", "children": []}
        self.start().send("open", window=7, title="Other", tree=tree)
        self.seen.find("frame", "Other")
        key = lambda *names: lambda: self.desk.key(*names, window="Kelvane")
        chosen = lambda number: {"kind": "menuChosen", "line": number}
        for number, (end, told) in enumerate([
            (key("Home", "Return"), chosen(4)),
            (key("p", "space"), chosen(4)),
            (key("ctrl+comma"), chosen(4)),
            (key("m", "Right", "a", "KP_Enter"), chosen(8)),
            (lambda: self.press("menu item", "Preferences…"), chosen(4)),
            (self.click_on_preferences, chosen(4)),
            (key("Escape"), {"kind": "menuClosed"}),
            (lambda: self.desk.pointer(100, 600, 1), {"kind": "menuClosed"}),
            (lambda: self.peer.send("front", window=7),
             {"kind": "menuClosed", "hasLostFocus": True}),
            (lambda: self.peer.send("closeMenu", menu=9), None),
        ]):
            with self.subTest(told, number=number):
                self.show(number)
                end()
                if told:
                    self.assertEqual(self.peer.wait_for(told["kind"]), {**told, "menu": number})
                self.wait_until_gone("menu", "Kelvane")
                self.assert_quiet()
                # Whoever had the keys has them again.
                self.desk.key("shift", window="Other")

    def click_on_preferences(self):
        self.desk.pointer(700, 300 + 16 + 60)
        self.wait_for_items("57%", "-", "[Preferences…]", "More")
        self.desk.pointer(700, 300 + 16 + 60, 1)

    def test_stays_on_the_screen_whatever_its_size(self):
        self.start()
        for number, (anchor, place) in enumerate([
            ((640, 10), lambda left, top, right, bottom: (left, top) == (640, 26)),
            ((1275, 10), lambda left, top, right, bottom: (right, top) == (1280, 26)),
            ((640, 700), lambda left, top, right, bottom: (left, bottom) == (640, 684)),
            ((-9e9, 9e9), lambda left, top, right, bottom: (left, bottom) == (0, 720)),
            (None, lambda left, top, right, bottom: (left, top) == (301, 216)),
        ]):
            with self.subTest(anchor):
                self.desk.pointer(300, 200)
                self.show(number, anchor)
                before = self.wait_for_place(place)
                self.desk.key("m", "Right", window="Kelvane")
                self.seen.find("menu item", "About")
                after = self.wait_for_place(place)
                self.assertGreater(after[3] - after[1], before[3] - before[1])
                self.peer.send("closeMenu", menu=number)
                self.wait_until_gone("menu", "Kelvane")

    def wait_for_place(self, is_right):
        wait_until(lambda: is_right(*self.place()), lambda: f"another place than {self.place()}", 5)
        return self.place()

    def place(self):
        told = self.desk.x("xwininfo", "-id", self.desk.x("xdotool", "getwindowfocus").strip())
        x, y, width, height = (int(re.search(rf"{what}:\s+(-?\d+)", told)[1]) for what in
                               ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height"))
        return x, y, x + width, y + height


if __name__ == "__main__":
    unittest.main()
