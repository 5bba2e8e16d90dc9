"""What programs ask of the notification daemon, and what it does."""

import typing

from .monitor import Monitor

NOTIFICATIONS = "org.freedesktop.Notifications"


class Notice(typing.NamedTuple):
    """The arguments of Notify."""

    application: str
    replaces: int
    icon: str
    summary: str
    body: str
    actions: list
    hints: dict
    timeout: int

    @property
    def text(self):
        return (self.summary, self.body)

    @property
    def urgency(self):
        return self.hints.get("urgency", 1)


class Notices:
    """Everything about notices on the session bus at `address`, since `clear`."""

    def __init__(self, address):
        self.monitor = Monitor(address, NOTIFICATIONS, service=NOTIFICATIONS)

    def close(self):
        self.monitor.close()

    def clear(self):
        self.monitor.messages.clear()

    def posted(self):
        return [Notice(*call.arguments) for call in self.monitor.calls("Notify")]

    def texts(self):
        """Summary and body of what was posted, in order."""
        return [notice.text for notice in self.posted()]

    def shown(self):
        """{id: Notice} of what the daemon has taken and not closed since."""
        asked, shown = {}, {}
        for message in self.monitor.messages.signals():
            if message.member == "Notify":
                asked[message.sender, message.serial] = Notice(*message.arguments)
            elif message.kind == "return" and (message.destination, message.answers) in asked:
                shown[message.arguments[0]] = asked.pop((message.destination, message.answers))
            elif message.member == "NotificationClosed":
                shown.pop(message.arguments[0], None)
        return shown

    def shown_texts(self):
        return sorted(notice.text for notice in self.shown().values())
