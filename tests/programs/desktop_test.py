"""Tests the wallpaper of a desktop on real X servers and a real Wayland compositor.

usage: desktop_test.py DIRECTORY-OF-THE-PROGRAMS
"""
import ctypes
import glob
import json
import os
import pathlib
import re
import shlex
import shutil
import signal
import socket
import struct
import subprocess
import sys
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), '../fixture'))
import device
from bus_service import Service, start_bus
from device import LUMORA
from gif_writer import gif, image, lzw
from session import NO_BUSES, Desktop, X11Session, needs_x11

RED, BLUE, WHITE, BLACK = (255, 0, 0), (0, 0, 255), (255, 255, 255), (0, 0, 0)
# What the compositor shows on an output without a wallpaper.
EMPTY = (62, 62, 62)


def two_colors(size, one, other, choose):
    """A GIF of two equal frames: the pixel (x, y) has the other color if choose(x, y)."""
    indices = bytes(bool(choose(x, y)) for y in range(size[1]) for x in range(size[0]))
    frame = image(size, lzw(indices), bytes(one + other), delay=4)
    return gif(size, [frame, frame])


def halves(one, other):
    return two_colors((64, 64), one, other, lambda x, y: x >= 32)


def some(length):
    """Places along a side: every eleventh and the last."""
    return sorted({*range(0, length, 11), length - 1})


def is_like(color, expected, tolerance):
    return expected is None or all(abs(one - other) <= tolerance
                                   for one, other in zip(color, expected))


@needs_x11
class X11Desktop(X11Session):
    """A desktop on X11."""

    def test_pauses_while_it_cannot_be_seen(self):
        server = self.start_server('Xvfb', '-screen', '0', '640x480x24')
        manager = self.start_window_manager(server)
        desktop = self.show_desktop(self.gif)
        self.becomes(True, 'shown')
        self.assertEqual(self.shared()['frame'], [0, 0, 640, 480])
        self.assertIn('a desktop has no', self.fails(1, 'rotate', 'left'))
        self.assertIn('a desktop has no', self.fails(1, 'app', 'open'))
        self.assertEqual(self.ok('toggle'), 'paused\n')
        self.becomes(False, 'by hand')
        self.assertEqual(self.ok('toggle'), 'playing\n')
        self.becomes(True, 'shown')
        other = os.path.join(self.folder, 'other')
        for size, has_manager, playing, why in (('700x900', True, False, 'covered'),
                                                ('300x400', True, True, 'shown'),
                                                ('700x900', False, False, 'covered')):
            if not has_manager:
                manager.terminate()
                manager.wait(20)
            window = self.show(LUMORA, 'run', '--root', other, '--display', 'window',
                               '--screen', size, '--scale', '1')
            subprocess.run([LUMORA, '--root', other, 'wait'], check=True, timeout=60)
            self.becomes(playing, why)
            # The state is also right at the start.
            desktop.terminate()
            desktop.wait(20)
            desktop = self.show_desktop()
            self.becomes(playing, why)
            window.terminate()
            window.wait(20)
            self.becomes(True, 'shown')
        # The X server's own screen saver.
        for on, playing, why in ((1, False, 'covered'), (0, True, 'shown')):
            server.set_saver(on)
            self.becomes(playing, why)
        picture = os.path.join(self.folder, 'picture.png')
        self.ok('screenshot', picture)
        with open(picture, 'rb') as file:
            screenshot = file.read()
        self.assertEqual(struct.unpack('>II', screenshot[16:24]), (640, 480))
        self.ok('record', os.path.join(self.folder, 'frames/'), '--seconds', '0.1')
        with open(os.path.join(self.folder, 'frames/frame-00001.png'), 'rb') as file:
            self.assertEqual(file.read(24), screenshot[:24])

    def test_fills_each_monitor_and_follows_changes(self):
        self.start_server('Xvfb', '-screen', '0', '1200x900x24')
        server = self.start_server('Xephyr', '-screen', '800x600', '-resizeable')
        self.start_window_manager(server)
        desktop = self.show_desktop('--scaling', 'FULLSCREEN',
                                    self.file('halves.gif', halves(RED, BLUE)))
        colors = {'red': 0xff0000, 'blue': 0x0000ff}

        def shows(**places):
            self.eventually(lambda: all(server.pixel(*place) == colors[name[:-1].rstrip('_')]
                                        for name, place in places.items()),
                            lambda: {name: hex(server.pixel(*place))
                                     for name, place in places.items()})

        shows(red_1=(10, 590), red_2=(390, 10), blue_1=(410, 10), blue_2=(790, 590))
        self.in_session('xrandr', '--setmonitor', 'LEFT', '400/100x600/100+0+0', 'default')
        self.in_session('xrandr', '--setmonitor', 'RIGHT', '400/100x600/100+400+0', 'none')
        shows(red_1=(190, 300), blue_1=(210, 300), red_2=(590, 300), blue_2=(610, 300))
        outputs = json.loads(self.ok('outputs', '--json'))
        self.assertEqual([(output['name'], output['area']) for output in outputs],
                         [('LEFT', [0, 0, 400, 600]), ('RIGHT', [400, 0, 400, 600])])
        desktop.terminate()
        desktop.wait(20)
        background = server.pixel(10, 300)
        self.assertNotIn(background, colors.values())
        self.show_desktop('--output', 'RIGHT')
        shows(red_1=(590, 300), blue_1=(610, 300))
        self.assertEqual(server.pixel(10, 300), background)
        self.ok('stop')
        self.show_desktop()
        shows(red_1=(190, 300), blue_1=(610, 300))
        self.assertIn('no output NONE; the outputs are LEFT, RIGHT',
                      self.fails(1, 'set', self.gif, '--output', 'NONE'))

        def seen_until(color, *words):
            program = self.show(LUMORA, '--root', self.root, *words)
            seen = set()
            self.eventually(lambda: seen.add(server.pixel(190, 300)) or
                            (color in seen and program.poll() is not None))
            self.assertEqual(program.returncode, 0, words)
            return seen

        other = self.file('other.gif', device.gif(BLUE, BLUE))
        self.assertEqual(seen_until(0x0000ff, 'set', other, '--output', 'LEFT'), {0xff0000, 0x0000ff})
        shows(blue_1=(190, 300), red_1=(590, 300), blue_2=(610, 300))
        # One that has died is started by the next command.
        host = self.host_of(os.path.join(self.root, '.host/outputs/LEFT'))
        os.kill(host, signal.SIGKILL)
        shows(red_1=(190, 300))
        self.ok('set', other, '--output', 'LEFT')
        shows(blue_1=(190, 300))
        self.assertIn('LEFT  400x600 at (0, 0), scale 1, a wallpaper of its own\n',
                      self.ok('outputs'))
        for words in (['status'], ['status', '--output', 'LEFT']):
            self.assertTrue(json.loads(self.ok(*words, '--json'))['locations']['shared']['playing'])
        self.assertEqual(seen_until(0xff0000, 'remove', '--output', 'LEFT'), {0x0000ff, 0xff0000})
        shows(red_1=(10, 300), blue_1=(210, 300), red_2=(590, 300))
        self.in_session('xrandr', '--delmonitor', 'RIGHT')
        self.in_session('xrandr', '--delmonitor', 'LEFT')
        self.in_session('xrandr', '-s', '1024x768')
        shows(red_1=(10, 760), red_2=(500, 10), blue_1=(524, 10), blue_2=(1014, 760))
        # Clicks go through the window, and other programs find a copy of it.
        self.assertRegex(self.in_session('xprop', '-root', '_XROOTPMAP_ID'), 'pixmap id # 0x')
        window = re.search('(0x[0-9a-f]+) "Lumora"', self.in_session('xwininfo', '-root', '-tree'))[1]
        self.assertIn('Input shape: 0 rectangles',
                      self.input_shape(server, int(window, 16)))

    def host_of(self, root):
        for path in glob.glob('/proc/[0-9]*/cmdline'):
            try:
                with open(path, 'rb') as file:
                    words = file.read().split(b'\0')
            except OSError:
                continue
            if words[0].endswith(b'springboard') and root.encode() in words:
                return int(path.split('/')[2])
        raise AssertionError('no home screen for ' + root)

    def input_shape(self, server, window):
        shape = ctypes.CDLL('libXext.so.6')
        shape.XShapeGetRectangles.restype = ctypes.c_void_p
        count, order, of_input = ctypes.c_int(-1), ctypes.c_int(), 2
        shape.XShapeGetRectangles(server.display, ctypes.c_ulong(window), of_input,
                                  ctypes.byref(count), ctypes.byref(order))
        return f'Input shape: {count.value} rectangles'

    def test_fades_to_a_new_wallpaper(self):
        server = self.start_server('Xvfb', '-screen', '0', '320x240x24')
        self.ok('set', self.file('red.gif', device.gif(RED, RED)))
        background = server.pixel(20, 20)

        def seen_until(color):
            seen = set()
            self.eventually(lambda: seen.add(server.pixel(20, 20)) or color in seen)
            return seen

        self.show(LUMORA, 'run', '--root', self.root, '--display', 'desktop', '--transition', '1')
        # Nothing else is shown before the wallpaper.
        self.assertLessEqual(seen_until(0xff0000), {background, 0xff0000})
        self.ok('set', '--no-wait', self.file('blue.gif', device.gif(BLUE, BLUE)))
        seen = seen_until(0x0000ff)
        self.assertGreater(len(seen), 2)
        for color in seen:
            self.assertAlmostEqual((color >> 16) + (color & 0xff), 255, delta=3, msg=hex(color))

    def test_comes_back_at_login(self):
        server = self.start_server('Xvfb', '-screen', '0', '320x240x24')
        lumora = [LUMORA, '--root', self.root]
        wide = two_colors((64, 32), RED, RED, lambda x, y: False)
        self.show_desktop('--scaling', 'contain', '--backdrop', '#0000ff', self.file('wide.gif', wide))
        self.eventually(lambda: (server.pixel(20, 5), server.pixel(20, 120)) == (0x0000ff, 0xff0000))
        self.ok('backdrop', '#00ff00')
        self.eventually(lambda: (server.pixel(20, 5), server.pixel(20, 120)) == (0x00ff00, 0xff0000))
        self.ok('stop')
        self.assertEqual(self.in_session(*lumora, 'autostart', 'status'), 'off\n')
        # systemd reads one of them, all other sessions the other one.
        runtime = os.path.join(self.folder, 'runtime')
        os.makedirs(runtime + '/systemd')
        self.environment['XDG_RUNTIME_DIR'] = runtime
        self.in_session(*lumora, 'autostart', 'on')
        wanted = os.path.join(self.folder, '.config/systemd/user/graphical-session.target.wants')
        with open(os.path.join(wanted, 'lumora.service')) as file:
            self.assertIn(f'ExecStart="{LUMORA}" "run" "--restore" "--root" "{self.root}"\n', file.read())
        with open(os.path.join(self.folder, '.config/autostart/lumora.desktop')) as file:
            command = shlex.split(re.search('^Exec=(.*)$', file.read(), re.M)[1])
        self.assertNotEqual(server.pixel(20, 120), 0xff0000)
        self.show(*command)
        self.eventually(lambda: (server.pixel(20, 5), server.pixel(20, 120)) == (0x00ff00, 0xff0000))
        self.in_session(*lumora, 'autostart', 'start')
        self.in_session(*lumora, 'autostart', 'off')
        self.assertEqual(os.listdir(wanted), [])
        self.assertIn('running', self.fails(1, 'forget'))
        self.ok('stop')
        self.in_session(*lumora, 'autostart', 'start')
        self.fails(3, 'stop')
        mine = self.file(os.path.join(self.root, 'var/mobile/mine'), b'')
        self.assertRegex(self.ok('forget'), 'deleted [1-9]')
        self.assertEqual([path for path in glob.glob(self.root + '/**', recursive=True)
                          if not os.path.isdir(path)], [mine])
        self.assertFalse(os.path.exists(self.on_device('.host')))

    def test_pauses_on_battery_if_asked_to(self):
        daemon, address = start_bus(self.folder)
        self.programs.append(daemon)
        self.environment['DBUS_SYSTEM_BUS_ADDRESS'] = address
        power = Service(address, 'org.freedesktop.UPower', '/org/freedesktop/UPower', True)
        self.addCleanup(power.close)
        server = self.start_server('Xvfb', '-screen', '0', '320x240x24')
        desktop = self.show_desktop('--on-battery', 'pause', '--transition', 'none',
                                    self.file('red.gif', device.gif(RED, RED)))
        self.becomes(False, 'to save power')
        self.eventually(lambda: server.pixel(20, 20) == 0xff0000)
        self.ok('set', self.file('blue.gif', device.gif(BLUE, BLUE)))
        self.eventually(lambda: server.pixel(20, 20) == 0x0000ff)
        self.becomes(False, 'to save power')
        power.set(False)
        self.becomes(True, 'shown')
        power.set(True)
        self.becomes(False, 'to save power')
        desktop.terminate()
        desktop.wait(20)
        self.show_desktop()
        self.becomes(True, 'shown')

    def test_refuses_what_only_a_phone_has(self):
        self.start_server('Xvfb', '-screen', '0', '320x240x24')
        self.show_desktop(self.gif)
        self.becomes(True, 'shown')
        for words in (['mode', 'separate'], ['dock', 'on'], ['set', 'lockscreen', self.gif]):
            self.assertIn('a desktop has one wallpaper', self.fails(1, *words))
        for words in (['lock'], ['screen', 'off'], ['rotate', 'left']):
            self.assertIn('a desktop has no', self.fails(1, *words))
        self.becomes(True, 'shown')
        self.assertIn('already running', self.fails(1, 'run', '--display', 'headless'))
        self.fails(2, 'run', '--output', 'screen', '--display', 'headless')

    def test_starts_whatever_lies_in_its_folder(self):
        self.start_server('Xvfb', '-screen', '0', '320x240x24')
        own = self.on_device('.host/outputs')
        os.makedirs(own)
        os.chmod(self.on_device('.host'), 0o700)
        os.makedirs(os.path.join(own, '.new-screen/var'))
        elsewhere = os.path.join(self.folder, 'elsewhere')
        os.mkdir(elsewhere)
        os.symlink(elsewhere, os.path.join(own, 'elsewhere'))
        self.file(os.path.join(own, 'file'), b'')
        self.file(self.on_device('.host/desktop'), b'--scale\nhuge\n\0')
        lumora = [LUMORA, '--root', self.root, 'run']
        done = subprocess.run([*lumora, '--display', 'desktop', '--background', '--output', 'none'],
                              env=self.environment, capture_output=True, text=True, timeout=60)
        self.assertEqual(done.returncode, 0)
        self.assertRegex(done.stdout + done.stderr, 'there is no output none; the outputs are [a-z]')
        name = json.loads(self.ok('outputs', '--json'))[0]['name']
        self.assertIn(', not used', self.ok('outputs'))
        self.assertIn('has not chosen', self.ok('set', self.gif, '--output', name))
        self.assertEqual(sorted(os.listdir(own)), sorted([name, 'elsewhere', 'file']))
        self.ok('stop')
        # A login works even so, and if it is started twice.
        backdrop = self.file('backdrop.gif', device.gif(BLUE))
        self.show_desktop('--backdrop', backdrop, '--frame-memory', '3')
        self.ok('stop')
        os.remove(backdrop)
        restored = [self.show(*lumora, '--restore') for _ in range(2)]
        self.ok('wait')
        self.eventually(lambda: [program.poll() for program in restored].count(0) == 1)
        running = [program.pid for program in restored if program.poll() is None][0]
        with open(f'/proc/{running}/task/{running}/children', encoding='ascii') as children:
            lines = [pathlib.Path(f'/proc/{child}/cmdline').read_bytes()
                     for child in children.read().split()]
        self.assertTrue(any(b'--frame-memory\0003\0' in line for line in lines), lines)
        self.assertEqual(os.listdir(elsewhere), [])

    def test_has_the_right_colors_on_every_screen(self):
        for depth, red in ((16, 0xf800), (24, 0xff0000), (30, 0x3ff00000)):
            server = self.start_server('Xvfb', '-screen', '0', f'320x240x{depth}')
            desktop = self.show_desktop('--scaling', 'FULLSCREEN',
                                        self.file('halves.gif', halves(RED, BLUE)))
            self.eventually(lambda: server.pixel(20, 20) == red)
            desktop.terminate()
            desktop.wait(20)


@unittest.skipUnless(shutil.which('sway') and shutil.which('swaybg') and
                     shutil.which('grim') and shutil.which('foot') and
                     os.geteuid() == 0, 'needs sway, swaybg, grim, foot and root')
class WaylandDesktop(Desktop):
    """A desktop with its own compositor, which runs as another user because it refuses root."""
    NOBODY = 65534

    def start_compositor(self, outputs, has_background=False):
        os.chmod(self.folder, 0o755)
        self.session = os.path.join(self.folder, 'session')
        os.mkdir(self.session, 0o700)
        os.chown(self.session, self.NOBODY, self.NOBODY)
        self.environment.update(XDG_RUNTIME_DIR=self.session, WLR_BACKENDS='headless',
                                WLR_HEADLESS_OUTPUTS=str(outputs), WLR_LIBINPUT_NO_DEVICES='1',
                                WLR_RENDERER='pixman')
        configuration = self.file('sway.conf', b'''
            xwayland disable
            default_border none
            output HEADLESS-1 resolution 1280x720 position 0,0 scale 1.5
            output HEADLESS-2 resolution 640x480 position 2000,0
        ''' + b''.join(b'output * bg #00ff00 solid_color\n' for _ in range(has_background)))
        self.show_as_nobody('sway', '-c', configuration)
        self.eventually(lambda: glob.glob(self.session + '/sway-ipc*'))
        self.eventually(lambda: glob.glob(self.session + '/wayland-?'))
        self.environment['SWAYSOCK'] = glob.glob(self.session + '/sway-ipc*')[0]
        self.environment['WAYLAND_DISPLAY'] = os.path.basename(glob.glob(self.session + '/wayland-?')[0])

    def show_as_nobody(self, *words):
        return self.show(*words, user=self.NOBODY, group=self.NOBODY, extra_groups=[])

    def sway(self, *words):
        return subprocess.run(['swaymsg', *words], env=self.environment, check=True, timeout=20,
                              capture_output=True).stdout

    def pixels(self, output, scale):
        """The size of an output and a function that gives its pixels. grim scales the picture unless
        the scale is the largest of all outputs, which is its default."""
        scaling = ['-s', str(scale)] if scale else []
        ppm = subprocess.run(['grim', '-t', 'ppm', *scaling, '-o', output, '-'], env=self.environment,
                             capture_output=True, check=True, timeout=20).stdout
        kind, width, height, _, data = ppm.split(maxsplit=4)
        width, height = int(width), int(height)
        data = data[-3 * width * height:]
        return (width, height), lambda x, y: tuple(data[3 * (y * width + x):][:3])

    def eventually_shows(self, output, size, expected, scale=None, tolerance=4):
        """Waits until each pixel is like expected(x, y); None is any color."""
        def differing():
            found, pixel = self.pixels(output, scale)
            if found != size:
                return found
            return [(x, y, pixel(x, y)) for y in some(size[1]) for x in some(size[0])
                    if not is_like(pixel(x, y), expected(x, y), tolerance)][:5]
        self.eventually(lambda: not differing(), differing)

    def test_is_exact_on_every_output_and_follows_them(self):
        self.start_compositor(outputs=2)
        checks = two_colors((1280, 720), BLACK, WHITE, lambda x, y: (x + y) % 2)
        self.show_desktop('--scaling', 'FULLSCREEN', self.file('checks.gif', checks))

        def check(x, y):
            return WHITE if (x + y) % 2 else BLACK

        # grim moves pixels by fractions. If the compositor scaled the surface, all would be gray.
        self.eventually_shows('HEADLESS-1', (1280, 720), check, tolerance=80)
        self.ok('set', self.file('halves.gif', halves(RED, BLUE)))
        self.sway('output', 'HEADLESS-1', 'scale', '1.25')

        def half(width):
            # The filter mixes colors in the middle.
            return lambda x, y: RED if x < width * 0.45 else BLUE if x > width * 0.55 else None

        self.eventually_shows('HEADLESS-1', (1280, 720), half(1280))
        self.eventually_shows('HEADLESS-2', (640, 480), half(640), scale=1)
        self.sway('output', 'HEADLESS-2', 'resolution', '800x600', 'transform', '90')
        self.eventually_shows('HEADLESS-2', (600, 800), half(600), scale=1)
        self.sway('create_output')
        self.sway('output', 'HEADLESS-3', 'resolution', '320x240')
        self.eventually_shows('HEADLESS-3', (320, 240), half(320), scale=1)
        self.assertIn('HEADLESS-3  320x240', self.ok('status'))

    def test_shows_only_chosen_outputs_or_spans_them(self):
        self.start_compositor(outputs=2)
        picture = self.file('halves.gif', halves(RED, BLUE))
        desktop = self.show_desktop('--output', 'HEADLESS-2', '--scaling', 'stretch', picture)
        self.eventually_shows('HEADLESS-2', (640, 480),
                              lambda x, y: RED if x < 280 else BLUE if x > 360 else None, scale=1)
        self.eventually_shows('HEADLESS-1', (1280, 720), lambda x, y: EMPTY)
        desktop.terminate()
        desktop.wait(20)
        self.show_desktop('--span')
        self.eventually_shows('HEADLESS-1', (1280, 720), lambda x, y: RED)
        self.eventually_shows('HEADLESS-2', (640, 480), lambda x, y: BLUE, scale=1)

    def test_gives_an_output_a_wallpaper_of_its_own(self):
        self.start_compositor(outputs=2, has_background=True)
        green = (0, 255, 0)
        self.eventually_shows('HEADLESS-2', (640, 480), lambda x, y: green, scale=1)
        desktop = self.show_desktop(self.file('red.gif', device.gif(RED, RED)))

        def shows(first, second):
            self.eventually_shows('HEADLESS-1', (1280, 720), lambda x, y: first)
            self.eventually_shows('HEADLESS-2', (640, 480), lambda x, y: second, scale=1)

        shows(RED, RED)
        blue = self.file('blue.gif', device.gif(BLUE, BLUE))
        self.assertIn('HEADLESS-1, HEADLESS-2', self.fails(1, 'set', blue, '--output', 'HEADLESS-3'))
        self.ok('set', blue, '--output', 'HEADLESS-2')
        shows(RED, BLUE)
        self.ok('toggle')
        self.assertEqual(json.loads(self.ok('status', '--output', 'HEADLESS-2', '--json'))
                         ['locations']['shared']['why'], 'by hand')
        desktop.terminate()
        desktop.wait(20)
        # It is remembered, and can be changed while nothing runs.
        white = self.file('white.gif', device.gif(WHITE, WHITE))
        self.ok('set', white, '--output', 'HEADLESS-1')
        self.show_desktop()
        shows(WHITE, BLUE)
        self.ok('remove', '--output', 'HEADLESS-2')
        shows(WHITE, RED)
        self.ok('stop')
        shows(green, green)

    def test_fills_the_screen_unless_told_otherwise(self):
        self.start_compositor(outputs=2)
        wide = two_colors((64, 32), RED, BLUE, lambda x, y: y >= 16)
        self.show_desktop('--backdrop', '#102030', self.file('wide.gif', wide))
        self.eventually_shows('HEADLESS-2', (640, 480), lambda x, y: RED if y < 220 else
                              BLUE if y > 260 else None, scale=1)
        self.ok('scaling', 'shared', 'contain')
        self.eventually_shows('HEADLESS-2', (640, 480), lambda x, y: (16, 32, 48)
                              if not 79 <= y <= 401 else RED if 90 < y < 220 else None, scale=1)
        # A picture behind it, named from its folder. Its left and right quarters are cut off.
        self.ok('stop')
        stripes = two_colors((1024, 384), WHITE, BLACK, lambda x, y: 200 <= x < 512)
        self.file('stripes.gif', stripes)
        self.show_desktop('--backdrop', 'stripes.gif', cwd=self.folder)
        self.eventually_shows('HEADLESS-2', (640, 480), lambda x, y:
                              (BLACK if x < 315 else WHITE if x > 325 else None)
                              if not 79 <= y <= 401 else RED if 90 < y < 220 else None, scale=1)
        for text, code, reason in (('nothing.png', 1, 'No such file'), ('sway.conf', 1, 'not a GIF'),
                                   ('#12', 2, 'a color such as')):
            self.assertIn(reason, self.fails(code, 'run', '--display', 'desktop', '--backdrop',
                                             text if code == 2 else os.path.join(self.folder, text)))

    def show_windows(self, count):
        return [self.show_as_nobody('foot', 'sleep', '1000') for _ in range(count)]

    def is_unseen(self):
        return json.loads(self.ok('outputs', '--json'))[0]['unseen']

    def test_pauses_while_windows_cover_every_output(self):
        self.start_compositor(outputs=1)
        self.show_desktop(self.gif)
        self.becomes(True, 'shown')
        self.sway('bar', 'panel', 'position', 'top')
        self.eventually(lambda: json.loads(self.sway('-t', 'get_workspaces'))[0]['rect']['y'] > 0)
        self.show_windows(2)
        self.becomes(False, 'covered')
        for commands, playing, why in (
                ('gaps outer all set 10; focus left', True, 'shown'),
                ('gaps outer all set 0; layout tabbed; focus right', False, 'covered'),
                ('workspace 2', True, 'shown')):
            self.sway(commands)
            self.becomes(playing, why)
        window, = self.show_windows(1)
        self.becomes(False, 'covered')
        # It covers the output until it is moved, of which the compositor does not tell.
        self.sway('floating enable, resize set width 100 ppt height 100 ppt, move position 0 0')
        self.becomes(True, 'shown')
        self.sway('fullscreen enable')
        self.becomes(False, 'covered')
        window.terminate()
        self.becomes(True, 'shown')

    def test_pauses_without_a_list_of_all_windows(self):
        self.start_compositor(outputs=1)
        address = self.environment.pop('SWAYSOCK')
        self.show_desktop(self.gif)
        self.becomes(True, 'shown')
        self.environment['SWAYSOCK'] = address
        # Without playback there are no frames that could be late.
        self.ok('pause')
        self.show_as_nobody('foot', '--fullscreen', 'sleep', '1000')
        self.eventually(self.is_unseen)
        for commands, unseen in (('workspace 2', False), ('workspace 1', True),
                                 ('fullscreen disable', False)):
            self.sway(commands)
            self.eventually(lambda: self.is_unseen() == unseen)

    def test_does_without_a_list_of_windows(self):
        self.start_compositor(outputs=1)
        for answer in (b'', b'garbage' * 9, b'i3-ipc' + struct.pack('=II', 14, 4) + b'{"nodes":[{}]}',
                       b'i3-ipc' + struct.pack('=II', 2**31, 4)):
            with socket.socket(socket.AF_UNIX) as server:
                self.environment['SWAYSOCK'] = self.root + '.sock'
                server.bind(self.environment['SWAYSOCK'])
                server.listen()
                desktop = self.show_desktop(self.gif)
                with server.accept()[0] as connection:
                    connection.sendall(answer)
                    self.becomes(True, 'shown')
                    # The compositor does not show frames below it.
                    window = self.show_as_nobody('foot', '--fullscreen', 'sleep', '1000')
                    self.becomes(False, 'covered')
                window.terminate()
                self.becomes(True, 'shown')
                desktop.terminate()
                self.assertEqual(desktop.wait(20), 0)
            os.remove(self.environment['SWAYSOCK'])

    def test_says_what_is_missing(self):
        for environment, reason in (({'WAYLAND_DISPLAY': 'nowhere'}, 'cannot connect to the Wayland'),
                                    ({'WAYLAND_DISPLAY': '', 'DISPLAY': ''}, 'DISPLAY is not set')):
            done = subprocess.run([LUMORA, 'run', '--root', self.root, '--display', 'desktop'],
                                  env=dict(self.environment, **environment), capture_output=True,
                                  text=True, timeout=60)
            self.assertEqual((done.returncode, done.stdout), (1, ''))
            self.assertIn(reason, done.stderr)


if __name__ == '__main__':
    unittest.main(verbosity=2)
