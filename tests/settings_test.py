"""Settings by command: values, refusals, and a preferences file that survives all."""

import json
import pathlib
import resource
import subprocess
import unittest

from rig.case import CommandCase
from rig.kelvane import program

DEFAULTS = {
    "showPercentage": True,
    "showTimeOrPercentageOnHover": True,
    "largeIcon": False,
    "oldIconStyle": False,
    "showPercentageSignInIcon": True,
    "textOnlyIcon": False,
    "smallMenuBarText": True,
    "hideIconWhenOnPower": False,
    "notifyWhenFullyCharged": False,
    "notifyAtPercentagesOnPower": [],
    "notifyAtPercentagesOnBattery": [],
}


class SettingsTest(CommandCase):
    def get(self, key):
        return json.loads(self.run_kelvane("settings", "get", key).stdout)

    def set(self, key, value, **options):
        return self.run_kelvane("settings", "set", key, value, **options)

    @property
    def folder(self):
        return pathlib.Path(self.environment["XDG_CONFIG_HOME"]) / "kelvane"

    @property
    def file(self):
        return self.folder / "org.kelvane.Kelvane.plist"


class ValuesTest(SettingsTest):
    def test_list_names_every_key_with_its_default(self):
        listed = self.run_kelvane("settings", "list").stdout.splitlines()
        for key, value in DEFAULTS.items():
            lines = [line for line in listed if key in line.replace("=", " ").split()]
            self.assertEqual(len(lines), 1, f"{key} in {listed}")
            self.assertIn(json.dumps(value), lines[0])

    def test_what_is_set_is_got_and_kept_in_a_private_file(self):
        for key, value in [
            ("largeIcon", True),
            ("showPercentage", False),
            ("notifyAtPercentagesOnBattery", [0.2, 0.1]),
            ("notifyAtPercentagesOnPower", [0.77]),
        ]:
            self.set(key, json.dumps(value))
            got = self.get(key)
            self.assertEqual(sorted(got) if isinstance(got, list) else got,
                             sorted(value) if isinstance(value, list) else value)
        self.assertEqual(self.file.stat().st_mode & 0o777, 0o600)

    def test_refuses_unknown_keys_and_wrong_values(self):
        self.set("largeIcon", "true")
        before = self.file.read_bytes()
        for words in [
            ("get", "noSuchKey"),
            ("set", "noSuchKey", "true"),
            ("set", "largeIcon", "7"),
            ("set", "largeIcon", '"true"'),
            ("set", "largeIcon", "tru"),
            ("set", "notifyAtPercentagesOnBattery", "true"),
            ("set", "notifyAtPercentagesOnBattery", '["a"]'),
        ]:
            with self.subTest(words=words):
                self.run_kelvane("settings", *words, code=2)
        self.assertEqual(self.file.read_bytes(), before)

    def test_stored_value_of_the_wrong_type_reads_as_the_default(self):
        self.folder.mkdir(parents=True)
        self.file.write_text(
            '<?xml version="1.0"?><plist version="1.0"><dict>'
            "<key>largeIcon</key><array/><key>oldIconStyle</key><true/></dict></plist>"
        )
        self.assertIs(self.get("largeIcon"), False)
        self.assertIs(self.get("oldIconStyle"), True)


class FileTest(SettingsTest):
    def test_two_writers_at_once_lose_nothing(self):
        booleans = [key for key, value in DEFAULTS.items() if isinstance(value, bool)]
        for value in (True, False):
            writers = [
                subprocess.Popen(
                    [program(), "settings", "set", key, json.dumps(value)], env=self.environment
                )
                for key in booleans
            ]
            self.assertEqual([writer.wait(20) for writer in writers], [0] * len(booleans))
            got = {key: self.get(key) for key in booleans}
            self.assertEqual(got, dict.fromkeys(booleans, value))

    def test_unreadable_file_is_kept_aside_and_said_once(self):
        self.folder.mkdir(parents=True)
        garbage = b"bplist00\xff\x00 this is no property list"
        self.file.write_bytes(garbage)
        first = self.run_kelvane("settings", "get", "showPercentage")
        self.assertEqual(first.stdout.strip(), "true")
        self.assertEqual(len(first.stderr.splitlines()), 1, first.stderr)
        kept = list(self.folder.glob("*.corrupt-*"))
        self.assertEqual([file.read_bytes() for file in kept], [garbage])
        self.set("largeIcon", "true")
        second = self.run_kelvane("settings", "get", "largeIcon")
        self.assertEqual((second.stdout.strip(), second.stderr), ("true", ""))

    def test_full_disk_leaves_the_old_file_whole(self):
        self.set("largeIcon", "true")
        before = self.file.read_bytes()

        def no_room():
            resource.setrlimit(resource.RLIMIT_FSIZE, (8, 8))

        # Python ignores SIGXFSZ; left so for the child, a write beyond the limit fails with EFBIG.
        done = self.set("oldIconStyle", "true", code=1, preexec_fn=no_room, restore_signals=False)
        self.assertTrue(done.stderr.strip())
        self.assertEqual(self.file.read_bytes(), before)
        left_over = [file.name for file in self.folder.iterdir() if file.stat().st_size]
        self.assertEqual(left_over, [self.file.name])
        self.assertIs(self.get("largeIcon"), True)


if __name__ == "__main__":
    unittest.main()
