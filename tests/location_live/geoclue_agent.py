#!/usr/bin/python3
"""A GeoClue 2 agent, the part of a desktop shell that says whether programs may locate.

usage: geoclue_agent.py allow|deny
"deny" is the desktop's location switch turned off: the agent allows no accuracy at all and
refuses every program it is asked about. GeoClue 2.6 asks the agent only about sandboxed
programs; for the others it only reads the allowed accuracy.
Prints "registered" once GeoClue took it, then "authorize <desktop id> <accuracy>" per question."""
import sys

import dbus
import dbus.service
from dbus.mainloop.glib import DBusGMainLoop
from gi.repository import GLib

AGENT = 'org.freedesktop.GeoClue2.Agent'
allow = sys.argv[1:] == ['allow']
if not allow and sys.argv[1:] != ['deny']:
    sys.exit(__doc__)
# GeoClue's accuracy levels: 8 exact, 0 none.
MAX_ACCURACY = dbus.UInt32(8 if allow else 0)


class Agent(dbus.service.Object):
    @dbus.service.method(AGENT, in_signature='su', out_signature='bu')
    def AuthorizeApp(self, desktop_id, accuracy):
        print('authorize', desktop_id, int(accuracy), flush=True)
        return allow, accuracy if allow else dbus.UInt32(0)

    @dbus.service.method(dbus.PROPERTIES_IFACE, in_signature='ss', out_signature='v')
    def Get(self, interface, name):
        return MAX_ACCURACY

    @dbus.service.method(dbus.PROPERTIES_IFACE, in_signature='s', out_signature='a{sv}')
    def GetAll(self, interface):
        return {'MaxAccuracyLevel': MAX_ACCURACY}


DBusGMainLoop(set_as_default=True)
bus = dbus.SystemBus()
agent = Agent(bus, '/org/freedesktop/GeoClue2/Agent')
loop = GLib.MainLoop()


def failed(error):
    print('AddAgent failed:', error, flush=True)
    loop.quit()


# Asynchronous: GeoClue reads MaxAccuracyLevel from us before it answers AddAgent.
bus.get_object('org.freedesktop.GeoClue2', '/org/freedesktop/GeoClue2/Manager').AddAgent(
    'brenlow-test-agent', dbus_interface='org.freedesktop.GeoClue2.Manager',
    reply_handler=lambda: print('registered', flush=True), error_handler=failed)
loop.run()
sys.exit(1)
