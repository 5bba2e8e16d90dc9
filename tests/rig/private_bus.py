"""A message bus of our own: dbus-daemon on a socket in the rig's directory."""

import pathlib
import socket

from .processes import wait_until

_CONFIGURATION = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-BUS Bus Configuration 1.0//EN"
 "busconfig.dtd">
<busconfig>
  <type>{kind}</type>
  <listen>unix:path={socket}</listen>
  <auth>EXTERNAL</auth>
  {activation}
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
"""
_SYSTEM_SERVICES = pathlib.Path("/usr/share/dbus-1/services")


def start_bus(processes, directory, kind, services=(), environment=None):
    """Starts a "session" or "system" bus that activates only `services`; gives its address.

    A service is the name of one of the system's, or the path of a service file.
    """
    directory = pathlib.Path(directory)
    path = directory / f"{kind}_bus"
    path.unlink(missing_ok=True)
    activation = ""
    if services:
        folder = directory / "services"
        folder.mkdir(exist_ok=True)
        for service in services:
            source = pathlib.Path(service)
            if not source.is_absolute():
                source = _SYSTEM_SERVICES / f"{service}.service"
            (folder / source.name).write_bytes(source.read_bytes())
        activation = f"<servicedir>{folder}</servicedir>"
    configuration = directory / f"{kind}_bus.conf"
    configuration.write_text(
        _CONFIGURATION.format(kind=kind, socket=path, activation=activation)
    )
    command = ["dbus-daemon", "--nofork", "--nopidfile", "--config-file", configuration]
    processes.start(f"{kind}_bus", command, environment)
    wait_until(lambda: _answers(path), f"the {kind} bus")
    return f"unix:path={path}"


def _answers(path):
    # The socket's file is there a moment before anybody listens.
    with socket.socket(socket.AF_UNIX) as client:
        return client.connect_ex(str(path)) == 0


def installed_services(pattern):
    """Names of the bus services of the system that match a glob."""
    return [file.stem for file in _SYSTEM_SERVICES.glob(f"{pattern}.service")]
