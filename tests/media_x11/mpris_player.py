#!/usr/bin/python3
"""A small MPRIS 2 player for the tests, on the session bus of DBUS_SESSION_BUS_ADDRESS.

usage: mpris_player.py NAME [--spotify] [--paused] [--desktop-entry ENTRY] [--art URL]

With --spotify it imitates Spotify: the track id is a string, Position stays 0, the length is an
unsigned number and covers are named on open.spotify.com. Lines on stdin steer it:
  next | previous | playpause | stop | hang SECONDS | badmeta | longtitle
Every method call it receives is printed on stdout as one line, e.g. "SetPosition /t/1 12000000".
"""
import sys, time
import dbus, dbus.service
from dbus.mainloop.glib import DBusGMainLoop
from gi.repository import GLib

ROOT, PLAYER, PROPS = 'org.mpris.MediaPlayer2', 'org.mpris.MediaPlayer2.Player', 'org.freedesktop.DBus.Properties'
TRACKS = [('1', 'Erster Titel', 'Erste Band', 180_000_000, 'one-png'),
          ('2', 'Zweiter Titel', 'Zweite Band', 240_000_000, 'two-png'),
          ('3', 'Dritter Titel', 'Dritte Band', 200_000_000, 'three-png')]


def say(*words):
    print(*words, flush=True)


class Player(dbus.service.Object):
    def __init__(self, bus, spotify, paused, entry, art):
        super().__init__(bus, '/org/mpris/MediaPlayer2')
        self.spotify, self.entry, self.art = spotify, entry, art
        self.index, self.status = 0, 'Paused' if paused else 'Playing'
        self.position, self.since = 0.0, time.monotonic()
        self.hang_for, self.bad, self.long = 0, False, False

    def now(self):
        if self.status == 'Playing':
            return self.position + time.monotonic() - self.since
        return self.position

    def move(self, position):
        self.position, self.since = position, time.monotonic()

    def trackid(self):
        tid = TRACKS[self.index][0]
        if self.spotify:
            return dbus.String('spotify:track:' + tid)
        return dbus.ObjectPath('/org/brenlow/track/' + tid)

    def meta(self):
        tid, title, artist, length, art = TRACKS[self.index]
        if self.bad:
            return dbus.Dictionary({'mpris:trackid': self.trackid(), 'xesam:title': dbus.Int32(7),
                                    'xesam:artist': dbus.Double(1.5), 'mpris:length': dbus.String('lang')},
                                   signature='sv')
        if self.long:
            title = 'x' * 100_000
        data = {'mpris:trackid': self.trackid(), 'xesam:title': title,
                'xesam:artist': dbus.Array([artist], 's')}
        if self.spotify:
            data['mpris:length'] = dbus.UInt64(length)
            data['mpris:artUrl'] = dbus.String('https://open.spotify.com/image/' + art)
        else:
            data['mpris:length'] = dbus.Int64(length)
            if self.art:
                data['mpris:artUrl'] = dbus.String(self.art.replace('%ID%', tid))
        return dbus.Dictionary(data, signature='sv')

    def props(self, iface):
        if iface == ROOT:
            return {'Identity': 'Testplayer', 'DesktopEntry': self.entry, 'CanQuit': False, 'CanRaise': False,
                    'HasTrackList': False, 'SupportedUriSchemes': dbus.Array([], 's'),
                    'SupportedMimeTypes': dbus.Array([], 's')}
        position = 0 if self.spotify else int(self.now() * 1e6)
        return {'PlaybackStatus': self.status, 'Rate': 1.0, 'Metadata': self.meta(), 'Volume': 1.0,
                'Position': dbus.Int64(position), 'CanGoNext': True, 'CanGoPrevious': True, 'CanPlay': True,
                'CanPause': True, 'CanSeek': True, 'CanControl': True}

    def changed(self, **kw):
        self.PropertiesChanged(PLAYER, dbus.Dictionary(kw, signature='sv'), dbus.Array([], 's'))

    def stall(self):
        if self.hang_for:
            time.sleep(self.hang_for)

    @dbus.service.method(PROPS, in_signature='ss', out_signature='v')
    def Get(self, iface, prop):
        self.stall()
        return self.props(iface)[prop]

    @dbus.service.method(PROPS, in_signature='s', out_signature='a{sv}')
    def GetAll(self, iface):
        self.stall()
        return self.props(iface)

    @dbus.service.method(PROPS, in_signature='ssv')
    def Set(self, iface, prop, value):
        pass

    @dbus.service.signal(PROPS, signature='sa{sv}as')
    def PropertiesChanged(self, iface, changed, invalidated):
        pass

    def step(self, delta):
        self.index = (self.index + delta) % len(TRACKS)
        self.move(0)
        self.changed(Metadata=self.meta())

    @dbus.service.method(PLAYER)
    def PlayPause(self):
        self.move(self.now())
        self.status = 'Paused' if self.status == 'Playing' else 'Playing'
        self.changed(PlaybackStatus=self.status)
        say('PlayPause', self.status)

    @dbus.service.method(PLAYER)
    def Next(self):
        self.step(1)
        say('Next')

    @dbus.service.method(PLAYER)
    def Previous(self):
        self.step(-1)
        say('Previous')

    @dbus.service.method(PLAYER, in_signature='ox')
    def SetPosition(self, tid, position):
        say('SetPosition', tid, position)
        if not self.spotify and tid == self.trackid():
            self.move(position / 1e6)

    @dbus.service.method(PLAYER, in_signature='x')
    def Seek(self, offset):
        say('Seek', offset)


def steer(player, source, condition):
    line = source.readline()
    if not line:
        GLib.MainLoop().quit()
        sys.exit(0)
    words = line.split()
    if not words:
        return True
    command = words[0]
    if command == 'next':
        player.step(1)
    elif command == 'previous':
        player.step(-1)
    elif command == 'playpause':
        player.PlayPause()
    elif command == 'stop':
        player.status = 'Stopped'
        player.changed(PlaybackStatus='Stopped')
    elif command == 'hang':
        player.hang_for = float(words[1])
    elif command == 'badmeta':
        player.bad = True
        player.changed(Metadata=player.meta())
    elif command == 'longtitle':
        player.long = True
        player.changed(Metadata=player.meta())
    say('ok', command)
    return True


def main():
    args = sys.argv[1:]
    name = args[0]
    spotify = '--spotify' in args
    paused = '--paused' in args
    entry = args[args.index('--desktop-entry') + 1] if '--desktop-entry' in args else name
    art = args[args.index('--art') + 1] if '--art' in args else ''
    DBusGMainLoop(set_as_default=True)
    bus = dbus.SessionBus()
    player = Player(bus, spotify, paused, entry, art)
    keep = dbus.service.BusName('org.mpris.MediaPlayer2.' + name, bus)
    GLib.io_add_watch(sys.stdin, GLib.IO_IN | GLib.IO_HUP, lambda s, c: steer(player, s, c))
    say('ready')
    GLib.MainLoop().run()
    del keep


if __name__ == '__main__':
    main()
