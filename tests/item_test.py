"""The item on a real tray: what it offers, and how it follows a battery behind the real upowerd."""

import unittest

from rig.case import ARTIFACTS, DeskCase
from rig.menu import Menu
from rig.power import DISPLAY_DEVICE
from rig.processes import wait_until

LATENCY = 0.1  # seconds from UPower's signal to the item's


class ItemTest(DeskCase):
    def test_offers_what_a_tray_needs(self):
        item = self.start_kelvane().item()
        properties = item.properties()
        expected = {
            "Category": "Hardware",
            "Id": "org.kelvane.Kelvane",
            "Status": "Active",
            "ItemIsMenu": True,  # A click opens the menu, there is nothing else to open.
            "Menu": "/MenuBar",
        }
        self.assertEqual({name: properties.get(name) for name in expected}, expected)
        self.assertEqual(item.path, "/StatusNotifierItem")
        self.assertTrue(properties["Title"])
        # A name would win over the picture; a label would take its place on one desktop.
        for name in ("IconName", "OverlayIconName", "AttentionIconName", "XAyatanaLabel"):
            self.assertFalse(properties.get(name), name)
        self.assertTrue(item.tooltip()[0])

    def test_draws_one_square_picture_that_shows_something(self):
        pictures = self.start_kelvane().item().pictures()
        self.assertEqual(len(pictures), 1)
        picture = pictures[0]
        picture.save(ARTIFACTS / "item-xfce.png")
        self.assertIn((picture.width, picture.height), [(22, 22), (44, 44)])
        seen = sum(alpha > 60 for alpha in picture.alpha())
        share = seen / len(picture.alpha())
        self.assertTrue(0.1 < share < 0.9, f"{share:.0%} of the picture can be seen")

    def test_menu_tells_the_level(self):
        menu = Menu.of(self.start_kelvane().item())
        self.assertTrue(any("57" in label for label in menu.labels()), menu.labels())

    def test_capacity_change_is_drawn_at_once(self):
        item = self.start_kelvane().item()
        delays = []
        for level in (56, 42, 30, 8, 99):
            change = lambda level=level: self.power.set(f"capacity={level}")
            delays.append(self._delay(item, change, f"{level} %"))
        self._judge("capacity change", delays)

    def test_plug_and_unplug_are_drawn_at_once(self):
        item = self.start_kelvane().item()
        delays = []
        for change in (self.power.plug, self.power.unplug) * 2:
            delays.append(self._delay(item, change, change.__name__, any_object=True))
        self._judge("plug and unplug", delays)

    def test_nothing_is_said_when_nothing_visible_changed(self):
        item = self.start_kelvane().item()
        # The kernel knows no time; from here on UPower's word is what it says.
        wait_until(lambda: ":" in item.property("ToolTip")[2], "the time in the tool tip")
        upower = self.power.record(path=None)
        said = item.record()

        def updates_only_the_time():
            self.power.touch()  # In the same second as the last update UPower says nothing.
            return upower.signals(lambda signal: "UpdateTime" in signal.arguments[1])

        told = wait_until(updates_only_the_time, "UPower's UpdateTime", interval=0.2)
        self.assertEqual([set(signal.arguments[1]) for signal in told], [{"UpdateTime"}])
        # What kelvane had to say of that comes before what it says of the next, visible change.
        self.power.set("capacity=20")
        said.wait_for("NewIcon")
        item.property("Id")
        self.assertEqual(said.members().count("NewIcon"), 1, said.members())
        self.assertNotIn("LayoutUpdated", said.members())

    def test_hidden_while_on_power(self):
        kelvane = self.start_kelvane()
        owner = kelvane.item().owner
        kelvane.set("hideIconWhenOnPower", "true")
        self.power.plug()
        kelvane.wait_until_gone()
        self.assertFalse(self.desk.bus.has_owner(owner), "hidden, but still on the bus")
        self.power.unplug()
        self.assertTrue(kelvane.item().picture())

    def test_second_battery_comes_and_goes(self):
        item = self.start_kelvane().item()
        self.power.add("BAT1")
        self.addCleanup(self._remove_second_battery)
        self.changes_picture(item, lambda: self.power.set("BAT1.capacity=5"), "BAT1 at 5 %")
        self.changes_picture(item, lambda: self.power.remove("BAT1"), "BAT1's removal")

    def _remove_second_battery(self):
        if "BAT1" in self.power.names:
            self.power.remove("BAT1")

    def _delay(self, item, change, what, any_object=False):
        """Seconds from UPower's first word of a change to the item's NewIcon with a new picture."""
        upower = self.power.record(path=None if any_object else DISPLAY_DEVICE)
        before = item.picture()
        said = item.record()
        change()
        told = upower.wait_for(lambda signal: signal.member == "PropertiesChanged")
        drawn = said.wait_for("NewIcon", what=f"NewIcon after {what}")
        self.assertNotEqual(before, item.picture(), f"the picture is the same after {what}")
        return drawn.time - told.time

    def _judge(self, what, delays):
        print(f"{what}: " + ", ".join(f"{1000 * delay:.1f}" for delay in delays) + " ms")
        self.assertLess(max(delays), LATENCY)


if __name__ == "__main__":
    unittest.main()
