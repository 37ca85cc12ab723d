#!/usr/bin/python3
"""Serves NMEA GGA sentences of a fixed position to every client of a UNIX socket, once a second,
with a horizontal dilution of 4 (GeoClue makes that an accuracy of a few metres).

usage: nmea_server.py SOCKET [LAT LON | silent]
"silent" accepts clients and never sends anything: a receiver without a fix."""
import os
import socket
import sys
import threading
import time

if len(sys.argv) not in (2, 3, 4):
    sys.exit(__doc__)
path = sys.argv[1]
silent = sys.argv[2:] == ['silent']
lat, lon = (52.52, 13.405) if silent or len(sys.argv) == 2 else (float(sys.argv[2]), float(sys.argv[3]))


def degrees_minutes(value, width):
    whole = int(abs(value))
    return f'{whole:0{width}d}{(abs(value) - whole) * 60:07.4f}'


def gga():
    body = (f"GPGGA,{time.strftime('%H%M%S', time.gmtime())}.00,"
            f"{degrees_minutes(lat, 2)},{'N' if lat >= 0 else 'S'},"
            f"{degrees_minutes(lon, 3)},{'E' if lon >= 0 else 'W'},1,08,4.0,34.0,M,0.0,M,,")
    checksum = 0
    for character in body:
        checksum ^= ord(character)
    return f'${body}*{checksum:02X}\r\n'.encode()


def serve(connection):
    try:
        while True:
            if not silent:
                connection.sendall(gga())
            time.sleep(1)
    except OSError:
        pass


if os.path.exists(path):
    os.unlink(path)
server = socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
server.bind(path)
server.listen(4)
print('ready', flush=True)
while True:
    client, _ = server.accept()
    print('client', flush=True)
    threading.Thread(target=serve, args=(client,), daemon=True).start()
