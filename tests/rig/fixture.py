"""Something that a test sets up as a whole and that leaves nothing behind."""

from .processes import Processes


class Fixture:
    """A context with a message bus and children of its own, ended also when it does not come up.

    A class of this kind sets `processes` in its constructor and says in `_start` what comes up;
    `bus`, once there is one, is closed first.
    """

    processes: Processes
    bus = None

    def __enter__(self):
        try:
            self._start()
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        if self.bus:
            self.bus.close()
        self.processes.__exit__()
