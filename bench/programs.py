"""The programs that are compared: how each is started, and what it needs to be at its best."""

import dataclasses
import plistlib
import shutil

NAMES = (
    "kelvane", "cbatticon", "xfce4-power-manager", "mate-power-manager", "lxqt-powermanagement"
)

# Without a welcome, which waits for the user.
LAUNCHED_BEFORE = plistlib.dumps({"__hasLaunched__": True})


@dataclasses.dataclass
class Program:
    name: str
    command: list
    # Reads /sys itself, so it needs the preload library that shows it the fake one.
    reads_sys: bool = False
    variables: dict = dataclasses.field(default_factory=dict)
    # Commands to run on the desk beforehand.
    preparation: list = dataclasses.field(default_factory=list)
    # Files below its configuration folder, there before its first start.
    configuration: dict = dataclasses.field(default_factory=dict)

    def is_installed(self):
        return shutil.which(self.command[0]) is not None


def all_programs(kelvane, power, dpms_stub):
    show_icon = ["xfconf-query", "-c", "xfce4-power-manager", "-n", "-t", "bool", "-s", "true",
                 "-p", "/xfce4-power-manager/show-tray-icon"]
    return [
        Program("kelvane", [str(kelvane)],
                variables={"KELVANE_POWER_SUPPLY": power.power_supply},
                configuration={"kelvane/org.kelvane.Kelvane.plist": LAUNCHED_BEFORE}),
        Program("cbatticon", ["cbatticon"], reads_sys=True),
        Program("xfce4-power-manager", ["xfce4-power-manager", "--no-daemon"],
                variables={"LD_PRELOAD": str(dpms_stub)}, preparation=[show_icon]),
        Program("mate-power-manager", ["mate-power-manager", "--no-daemon"]),
        Program("lxqt-powermanagement", ["lxqt-powermanagement"]),
    ]
