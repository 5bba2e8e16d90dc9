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


class SoakTest(SoakCase):
    def test_memory_does_not_grow_with_events(self):
        kelvane = self.start_kelvane()
        item = kelvane.item()
        self.source.send(EVENTS // 10, item)
        early = memory(kelvane.process.pid)
        self.source.send(EVENTS - EVENTS // 10, item)
        late = memory(kelvane.process.pid)
        print(f"after {EVENTS // 10} events {early}, after {EVENTS} {late}")
        self.assertEqual(kelvane.terminate(), 0, kelvane.output())
        self.assertEqual(kelvane.output(), "")
        if not os.environ.get("KELVANE_SANITIZE"):
            self.assertLessEqual(late.dirty - early.dirty, ALLOWED_GROWTH)


if __name__ == "__main__":
    unittest.main()
