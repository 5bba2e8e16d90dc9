"""The notification daemons, each by the command that starts it."""

import glob

NAME = "org.freedesktop.Notifications"
NOTIFIERS = ("dunst", "xfce", "lxqt", "mako", "none")


def command(notifier):
    if notifier == "dunst":
        return ["dunst", "-print"]
    if notifier == "xfce":
        return glob.glob("/usr/lib/*/xfce4/notifyd/xfce4-notifyd")
    return {"lxqt": ["lxqt-notificationd"], "mako": ["mako"]}[notifier]
