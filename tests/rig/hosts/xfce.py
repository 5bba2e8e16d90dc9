"""xfce4-panel: one panel at the top with a menu, the tray and a clock."""

from .host import Host

_CHANNEL = """<?xml version="1.0"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array">
    <value type="int" value="1"/>
    <property name="dark-mode" type="bool" value="{dark}"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=6;x=0;y=0"/>
      <property name="length" type="uint" value="100"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="size" type="uint" value="{panel}"/>
      <property name="icon-size" type="uint" value="0"/>
      <property name="plugin-ids" type="array">
        <value type="int" value="1"/>
        <value type="int" value="2"/>
        <value type="int" value="3"/>
        <value type="int" value="4"/>
      </property>
    </property>
  </property>
  <property name="plugins" type="empty">
    <property name="plugin-1" type="string" value="applicationsmenu"/>
    <property name="plugin-2" type="string" value="separator">
      <property name="expand" type="bool" value="true"/>
      <property name="style" type="uint" value="0"/>
    </property>
    <property name="plugin-3" type="string" value="systray">
      <property name="square-icons" type="bool" value="false"/>
      <property name="hide-new-items" type="bool" value="false"/>
    </property>
    <property name="plugin-4" type="string" value="clock"/>
  </property>
</channel>
"""


class Xfce(Host):
    desktop = "XFCE"
    services = ("org.xfce.Xfconf",)

    def configure(self, home):
        folder = home / ".config/xfce4/xfconf/xfce-perchannel-xml"
        folder.mkdir(parents=True)
        channel = _CHANNEL.format(panel=self.look.panel, dark=str(self.look.dark).lower())
        (folder / "xfce4-panel.xml").write_text(channel)

    def start_panel(self, desk):
        desk.start("panel", "xfce4-panel", "--disable-wm-check")
