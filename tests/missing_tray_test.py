"""A login after which no tray comes is told of once, until there is one."""

import pathlib
import unittest

from rig.bus import Bus
from rig.case import DeskCase
from rig.kelvane import IDENTIFIER, program
from rig.notices import Notices
from rig.private_bus import start_bus
from rig.processes import Processes, wait_until

PATIENCE = 20.0  # seconds


class MissingTrayTest(DeskCase):
    def test_is_told_with_what_to_do_until_a_tray_comes(self):
        self.desk.kill_panel()
        # One that the user has started before has nothing to tell, then or later.
        folder = self.temporary_directory()
        processes = Processes(folder)
        self.addCleanup(processes.__exit__)
        address = start_bus(processes, folder, "session")
        notices = Notices(address)
        self.addCleanup(notices.close)
        environment = {**self.desk.environment, "DBUS_SESSION_BUS_ADDRESS": address,
                       "KELVANE_POWER_SUPPLY": self.power.power_supply}
        self.start_kelvane(environment=environment)
        bus = Bus(address)
        self.addCleanup(bus.close)
        wait_until(lambda: bus.has_owner(IDENTIFIER), "the one without a login")
        # The helper becomes kelvane by itself and reads no arguments.
        helper = pathlib.Path(program()).with_name("kelvane-autostart-helper")
        kelvane = self.start_kelvane(wrapper=[helper])
        notice = wait_until(self.notices, "the notice", PATIENCE + 10)
        self.assertEqual(len(notice), 1)
        title, text = notice[0]
        self.assertEqual(title, "No tray for the battery")
        self.assertIn("Add the item “Status Tray Plugin” to a panel", text)
        self.desk.start_panel()
        self.assertTrue(kelvane.item())
        wait_until(lambda: not self.notices(), "its end")
        self.assertEqual(len(self.desk.notices.posted()), 1)
        self.assertEqual(notices.texts(), [])

    def notices(self):
        return self.desk.notices.shown_texts()


if __name__ == "__main__":
    unittest.main()
