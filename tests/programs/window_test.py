"""Uses the simulated phone in a window as a person does, on real X servers.

usage: window_test.py DIRECTORY-OF-THE-PROGRAMS
"""
import ctypes
import os
import re
import sys
import time
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), '../fixture'))
import device
from device import LUMORA
from session import Hand, X11Session, needs_x11

PHONE = (390, 844)
# The thickness of the frame around the screen.
FRAME = 16
SURROUNDINGS = 0x2b2d34


@needs_x11
class Window(X11Session):
    def show_window(self, *words):
        window = self.show(LUMORA, 'run', '--root', self.root, '--display', 'window', *words)
        self.ok('wait', '--timeout', '30')
        return window

    def window(self):
        """The X11 number of the window."""
        tree = self.in_session('xwininfo', '-root', '-tree')
        return re.search('(0x[0-9a-f]+) "[^"]*": \\("lumora" "lumora"\\)', tree)[1]

    def geometry(self):
        """The window's corner and size."""
        text = self.in_session('xwininfo', '-id', self.window())
        return [int(re.search(name + r': +(-?\d+)', text)[1])
                for name in ('Absolute upper-left X', 'Absolute upper-left Y', 'Width', 'Height')]

    def pixel_of(self, x, y, size=PHONE):
        """Where a point of the screen is shown."""
        left, top, width, height = self.geometry()
        scale = min(width / (size[0] + 2 * FRAME), height / (size[1] + 2 * FRAME))
        return (left + width / 2 + (x - size[0] / 2) * scale,
                top + height / 2 + (y - size[1] / 2) * scale)

    def becomes_screen(self, state, after=None):
        self.eventually(lambda: self.status()['screen'] == state,
                        lambda: (after, self.status()))

    def test_obeys_fingers(self):
        hand = Hand(self.start_server('Xvfb', '-screen', '0', '1000x1000x24'))
        self.show_window('--locked', '--keys', 'off', self.gif)

        def drag(start, end):
            hand.drag(self.pixel_of(*start), self.pixel_of(*end))

        for start, end, state in (((200, 500), (200, 500), 'locked'),
                                  ((200, 700), (210, 300), 'home'),
                                  ((200, 700), (200, 300), 'home'),
                                  ((195, 690), (195, 690), 'home'),
                                  ((75, 796), (75, 796), 'app'),
                                  ((200, 400), (200, 100), 'app'),
                                  ((200, 835), (200, 500), 'home'),
                                  ((318, 300), (318, 300), 'app'),
                                  ((195, 833), (195, 833), 'home'),
                                  ((100, 5), (110, 400), 'locked')):
            drag(start, end)
            # Long enough for a wrong change to be seen.
            time.sleep(0.1)
            self.becomes_screen(state, (start, end))

    def test_obeys_keys_on_every_layout(self):
        server = self.start_server('Xvfb', '-screen', '0', '1000x1000x24')
        hand = Hand(server)
        shown = 0xfbfaf7

        def has_card():
            return is_near(server.pixel(*map(round, self.pixel_of(60, 400))), shown)

        # Only the first time, and until it is closed.
        self.show_window(self.gif)
        self.eventually(has_card)
        hand.drag(self.pixel_of(75, 796), self.pixel_of(75, 796))
        self.eventually(lambda: not has_card())
        self.becomes_screen('home')
        self.ok('stop')
        self.show_window()
        self.assertFalse(has_card())
        for layout, question in (('us', '/'), ('de', '-'), ('ru', '7')):
            self.in_session('setxkbmap', layout)
            time.sleep(0.2)
            for opening, closing in ((('Shift', question), ('Escape',)), (('F1',), ('F1',))):
                hand.press(*opening)
                self.eventually(has_card, lambda: (layout, opening))
                hand.press(*closing)
                self.eventually(lambda: not has_card(), lambda: (layout, closing))
            for state in ('locked', 'home'):
                hand.press('l')
                self.becomes_screen(state)

    def test_fits_the_monitor_and_follows_it(self):
        server = self.start_server('Xvfb', '-screen', '0', '900x600x24')
        manager = self.start_window_manager(server)
        hand = Hand(server)
        color = self.file('red.gif', device.gif((255, 0, 0), (255, 0, 0)))
        self.show_window('--scaling', 'FULLSCREEN', '--keys', 'off', color)

        def shows(point, pixel, size=PHONE):
            self.eventually(lambda: is_near(server.pixel(*map(round, self.pixel_of(*point, size))),
                                            pixel), lambda: (point, self.geometry()))

        left, top, width, height = self.geometry()
        self.assertGreater(min(left, top), 0)
        self.assertLess(top + height, 600)
        self.assertAlmostEqual(width / height, (390 + 2 * FRAME) / (844 + 2 * FRAME), delta=0.01)
        shows((20, 600), 0xff0000)
        hand.drag(self.pixel_of(75, 796), self.pixel_of(75, 796))
        self.becomes_screen('app')
        self.ok('home')
        # It turns, and then gets another size.
        self.ok('rotate', 'left')
        self.eventually(lambda: self.geometry()[2] > self.geometry()[3], self.geometry)
        shows((20, 300), 0xff0000, PHONE[::-1])
        window = ctypes.c_ulong(int(self.window(), 16))
        server.xlib.XMoveResizeWindow(server.display, window, 20, 40, 840, 500)
        server.xlib.XSync(server.display, 0)
        self.eventually(lambda: self.geometry()[2:] == [840, 500], self.geometry)
        shows((20, 300), 0xff0000, PHONE[::-1])
        shows((420, -60), SURROUNDINGS, PHONE[::-1])
        self.assertIn('"red.gif - Lumora"', self.in_session('xprop', '-id', self.window(), 'WM_NAME'))
        self.assertIn('128', self.in_session('xprop', '-id', self.window(), '_NET_WM_ICON'))
        # Nobody sees it.
        self.becomes(True, 'shown')
        server.xlib.XIconifyWindow(server.display, window, 0)
        server.xlib.XSync(server.display, 0)
        self.becomes(False, 'covered')
        server.xlib.XMapWindow(server.display, window)
        server.xlib.XSync(server.display, 0)
        self.becomes(True, 'shown')
        shows((20, 300), 0xff0000, PHONE[::-1])
        self.ok('stop')
        manager.terminate()
        manager.wait(20)
        for scale, width in (((), 844), (('--scale', '1'), 422)):
            server = self.start_server('Xvfb', '-screen', '0', '1000x2000x24')
            self.in_session('xprop', '-root', '-f', 'RESOURCE_MANAGER', '8s',
                            '-set', 'RESOURCE_MANAGER', 'Xft.dpi:\t192\n')
            self.show_window(*scale)
            self.assertEqual(self.geometry()[2], width)
            self.assertEqual(self.status()['scale'], 1)
            self.ok('stop')


def is_near(pixel, color):
    return pixel is not None and all(
        abs((pixel >> shift & 0xff) - (color >> shift & 0xff)) < 20 for shift in (0, 8, 16))


if __name__ == '__main__':
    unittest.main(verbosity=2)
