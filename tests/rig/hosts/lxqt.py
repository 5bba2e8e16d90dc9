"""lxqt-panel: one panel at the top with a menu, the status notifier plugin and a clock."""

from .host import Host

_PANEL = """[General]
panels=panel1
__userfile__=true

[panel1]
alignment=-1
animation-duration=0
desktop=0
hidable=false
iconSize={icon}
lineCount=1
lockPanel=true
panelSize={panel}
plugins=mainmenu,spacer,statusnotifier,worldclock
position=Top
width=100
width-percent=true

[mainmenu]
type=mainmenu

[spacer]
type=spacer
expandable=true

[statusnotifier]
type=statusnotifier

[worldclock]
type=worldclock
"""


class Lxqt(Host):
    desktop = "LXQt"

    def configure(self, home):
        folder = home / ".config/lxqt"
        folder.mkdir(parents=True)
        theme = "dark" if self.look.dark else "light"
        (folder / "lxqt.conf").write_text(
            f"[General]\n__userfile__=true\ntheme={theme}\nicon_theme=Adwaita\n"
        )
        panel = _PANEL.format(panel=self.look.panel, icon=self.look.panel - 10)
        (folder / "panel.conf").write_text(panel)

    def start_panel(self, desk):
        desk.start("panel", "lxqt-panel")
