"""Battery events in a row, as fast as the bus takes them: the last one is what is shown."""

import os
import time
import unittest

from rig import faults
from rig.meter import activity, spent
from rig.soak import SoakCase

EVENTS = int(os.environ.get("KELVANE_EVENTS", "20000"))
# What waits to be heard needs room, which may be kept for the next time. On a busy machine more of
# it waits, so there may be more rounds until two in a row need no more; a leak grows with each.
ROUNDS, MOST_ROUNDS = 4, 8
# kB of private dirty memory in a round: as in soak_test, less than any block at each event.
ALLOWED_GROWTH = 100


class FloodTest(SoakCase):
    def test_the_last_of_many_events_is_shown(self):
        kelvane = self.start_kelvane()
        item, pid = kelvane.item(), kelvane.process.pid
        before, began, done = faults.settled(pid), time.monotonic(), activity(pid)
        sizes = []
        for number in range(MOST_ROUNDS):
            last = 95 - number
            self.source.flood(EVENTS // ROUNDS, last)
            faults.wait_for_line(item, f"{last}%", "the flood", seconds=120)
            after = faults.settled(pid)
            sizes.append(after.dirty)
            growth = [now - then for then, now in zip(sizes[-3:], sizes[-2:])]
            is_settled = len(growth) == 2 and max(growth) <= ALLOWED_GROWTH
            if number + 1 >= ROUNDS and (is_settled or not faults.IS_MEASURABLE):
                break
        count = (number + 1) * (EVENTS // ROUNDS)
        cost = spent(done, activity(pid))
        print(f"{time.monotonic() - began:.1f} s, {cost.milliseconds / count:.3f} ms each; "
              f"{before.dirty} kB before, then {sizes} kB")
        self.assertEqual(after.descriptors, before.descriptors)
        self.assertEqual((kelvane.terminate(), kelvane.output()), (0, ""))
        self.assertTrue(is_settled or not faults.IS_MEASURABLE, f"{sizes} kB")
        faults.say("battery event in a flood", count)


if __name__ == "__main__":
    unittest.main()
