"""Battery events under valgrind: no invalid access, and no block lost at the end."""

import pathlib
import re
import unittest

from rig.soak import EVENTS, SoakCase

_SUPPRESSIONS = pathlib.Path(__file__).parent / "leaks" / "valgrind.supp"
_WRAPPER = (
    "valgrind",
    "--quiet",
    "--leak-check=full",
    "--show-leak-kinds=definite",
    "--errors-for-leak-kinds=definite",
    "--error-exitcode=99",
    "--num-callers=30",
    f"--suppressions={_SUPPRESSIONS}",
)


class LeaksTest(SoakCase):
    def test_no_block_is_lost(self):
        # Without GLib's slices and with freed memory cleared, what is lost is seen as lost.
        kelvane = self.start_kelvane(_WRAPPER, G_SLICE="always-malloc", G_DEBUG="gc-friendly")
        item = kelvane.item(seconds=60)
        self.source.send(EVENTS, item, seconds=30)
        self.assertEqual(kelvane.terminate(seconds=60), 0, kelvane.output())
        lost = re.findall(r"definitely lost.*", kelvane.output())
        self.assertEqual((lost, kelvane.output()), ([], ""))


if __name__ == "__main__":
    unittest.main()
