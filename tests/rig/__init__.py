"""The test rig: real services and real tray hosts on private buses.

Everything keeps its state in a directory it is given, so that several rigs run side by side, and
takes down what it started, also after a failure: its parts are context managers.
"""
