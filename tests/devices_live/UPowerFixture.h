#pragma once

// The UPower fixture the live test writes into its scratch folder: a python script run under
// umockdev-wrapper, and the configuration of its private "system" bus.

inline constexpr char upowerFixtureScript[] = R"PY(#!/usr/bin/python3
"""The real upowerd on a private system bus, fed a fake battery by umockdev.

Run as: umockdev-wrapper python3 upower_fixture.py <bus config>
Prints "BUS <address>" once upowerd shows the battery, then reads commands from stdin:
  battery <percent> charging|discharging   changes the battery and the charger, answers "OK"
End of input stops upowerd and the bus."""
import os
import subprocess
import sys
import time

import gi
gi.require_version('UMockdev', '1.0')
from gi.repository import UMockdev

testbed = UMockdev.Testbed.new()
battery = testbed.add_device('power_supply', 'BAT0', None,
    ['type', 'Battery', 'present', '1', 'status', 'Charging', 'capacity', '80',
     'energy_full', '60000000', 'energy_full_design', '80000000', 'energy_now', '48000000',
     'power_now', '10000000', 'voltage_now', '12000000'],
    ['POWER_SUPPLY_NAME', 'BAT0'])
charger = testbed.add_device('power_supply', 'AC', None, ['type', 'Mains', 'online', '1'],
                             ['POWER_SUPPLY_NAME', 'AC'])

bus = subprocess.Popen(['dbus-daemon', '--config-file=' + sys.argv[1], '--nofork', '--print-address'],
                       stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
address = bus.stdout.readline().strip()
os.environ['DBUS_SYSTEM_BUS_ADDRESS'] = address
upowerd = subprocess.Popen(['/usr/libexec/upowerd'], stderr=subprocess.DEVNULL, stdout=subprocess.DEVNULL)


def percentage():
    return subprocess.run(['gdbus', 'call', '--system', '--dest', 'org.freedesktop.UPower', '--object-path',
                           '/org/freedesktop/UPower/devices/DisplayDevice', '--method',
                           'org.freedesktop.DBus.Properties.Get', 'org.freedesktop.UPower.Device', 'Percentage'],
                          capture_output=True, text=True).stdout.strip()


for _ in range(200):
    if percentage().startswith('(<80'):
        break
    time.sleep(0.05)
print('BUS ' + address, flush=True)

for line in sys.stdin:
    words = line.split()
    if len(words) == 3 and words[0] == 'battery':
        percent = int(words[1])
        on_charger = words[2] == 'charging'
        testbed.set_attribute(charger, 'online', '1' if on_charger else '0')
        testbed.uevent(charger, 'change')
        testbed.set_attribute(battery, 'status', 'Charging' if on_charger else 'Discharging')
        testbed.set_attribute(battery, 'capacity', str(percent))
        testbed.set_attribute(battery, 'energy_now', str(600000 * percent))
        testbed.uevent(battery, 'change')
        print('OK', flush=True)

upowerd.terminate()
bus.terminate()
upowerd.wait()
bus.wait()
)PY";

inline constexpr char privateSystemBusConfig[] =
    R"XML(<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-BUS Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<!-- The tests' own "system" bus: no activation, everything allowed. -->
<busconfig>
  <type>system</type>
  <listen>unix:tmpdir=/tmp</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow user="*"/>
    <allow own="*"/>
    <allow send_type="method_call"/>
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
  </policy>
</busconfig>
)XML";
