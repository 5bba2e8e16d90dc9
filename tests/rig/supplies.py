"""What the kernel tells of batteries and adapters: the attributes of /sys/class/power_supply."""

import pathlib

_FULL = 57_000_000  # µWh


def attributes(name):
    """The attributes of a healthy supply at 57 %, on battery; names of adapters begin with AC."""
    if name.startswith("AC"):
        return {"type": "Mains", "online": "0"}
    return {
        "type": "Battery",
        "present": "1",
        "status": "Discharging",
        "technology": "Li-ion",
        "capacity": "57",
        "capacity_level": "Normal",
        "charge_control_end_threshold": "100",
        "cycle_count": "212",
        "energy_full": str(_FULL),
        "energy_full_design": "60000000",
        "energy_now": energy_at("57"),
        "power_now": "9500000",
        "voltage_now": "11400000",
        "voltage_min_design": "11100000",
        "manufacturer": "RIG",
        "model_name": f"Rig {name}",
        "serial_number": f"0{name[-1]}",
    }


def energy_at(capacity):
    return str(_FULL * int(capacity) // 100)


def changes(assignments):
    """Reads "capacity=40", "BAT1.status=Full", "online=1" into (supply, attribute, value) triples.

    Without a supply the adapter is meant for "online" and BAT0 for all else. A plain capacity moves
    energy_now along, as the two go together on every real battery.
    """
    for assignment in assignments:
        key, value = assignment.split("=", 1)
        supply, _, attribute = key.rpartition(".")
        supply = supply or ("AC" if attribute == "online" else "BAT0")
        yield supply, attribute, value
        if attribute == "capacity" and value.isdigit() and int(value) <= 100:
            yield supply, "energy_now", energy_at(value)


def plugged(names, on):
    """The assignments that plug the adapter in or pull it out."""
    status = "Charging" if on else "Discharging"
    batteries = [f"{name}.status={status}" for name in names if not name.startswith("AC")]
    return [f"AC.online={int(on)}", *batteries]


class SupplyDirectory:
    """A plain directory in the shape of /sys/class/power_supply; nobody is told of changes."""

    def __init__(self, path, names=("AC", "BAT0")):
        self.path = pathlib.Path(path)
        self.path.mkdir(parents=True, exist_ok=True)
        for name in names:
            self.add(name)

    def add(self, name):
        folder = self.path / name
        folder.mkdir()
        for attribute, value in attributes(name).items():
            (folder / attribute).write_text(f"{value}\n")

    def set(self, *assignments):
        for supply, attribute, value in changes(assignments):
            (self.path / supply / attribute).write_text(f"{value}\n")

    def plug(self):
        self.set(*plugged(self._names(), True))

    def unplug(self):
        self.set(*plugged(self._names(), False))

    def _names(self):
        return [folder.name for folder in self.path.iterdir()]
