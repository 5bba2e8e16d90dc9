"""Ten thousand battery events: the memory of the running program does not grow.

In a sanitizer's build, whose memory says nothing, the sanitizer's own verdict at the end counts.
"""

import os
import unittest

from rig.meter import memory
from rig.soak import EVENTS, SoakCase

# kB of private dirty memory between the first tenth of the events and their end. The smallest block
# that malloc gives takes 32 bytes: one lost at each event would be 281 kB.
ALLOWED_GROWTH = 160
# Events that wait to be heard on a busy machine need room, which is kept: that grows once, a leak
# with every round.
ROUNDS = 3


class SoakTest(SoakCase):
    def test_memory_does_not_grow_with_events(self):
        kelvane = self.start_kelvane()
        item = kelvane.item()
        self.source.send(EVENTS // 10, item)
        sizes = [memory(kelvane.process.pid).dirty]
        for _ in range(ROUNDS):
            self.source.send(EVENTS - EVENTS // 10, item)
            sizes.append(memory(kelvane.process.pid).dirty)
            grows_little = sizes[-1] - sizes[-2] <= ALLOWED_GROWTH
            if grows_little or os.environ.get("KELVANE_SANITIZE"):
                break
        print(f"after {EVENTS // 10} events, and every {EVENTS - EVENTS // 10} more: {sizes} kB")
        self.assertEqual(kelvane.terminate(), 0, kelvane.output())
        self.assertEqual(kelvane.output(), "")
        if not os.environ.get("KELVANE_SANITIZE"):
            self.assertTrue(grows_little, f"{sizes} kB")


if __name__ == "__main__":
    unittest.main()
