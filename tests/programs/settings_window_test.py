"""Uses the settings window as a person with a screen reader does: finds what it shows by role and
name, and acts on it.

usage: settings_window_test.py SettingsWindow.TEST DIRECTORY-OF-THE-PROGRAMS
"""
import ctypes
import json
import os
import re
import sys
import time
import unittest

FIXTURE = os.path.join(os.path.dirname(os.path.abspath(__file__)), '../fixture')
sys.path.insert(0, FIXTURE)
from bus_service import start_bus
from device import LUMORA, PROGRAMS, RED_GREEN, gif
from session import Hand, X11Session, needs_x11

PROGRAM = os.path.join(PROGRAMS, 'lumora-settings')
BLUE = gif((0, 0, 255))


class Screen:
    """What the accessibility bus of a session tells. Needs a process of its own for each bus."""

    def __init__(self, address):
        os.environ['DBUS_SESSION_BUS_ADDRESS'] = address
        import gi
        gi.require_version('Atspi', '2.0')
        from gi.repository import Atspi, GLib
        self.atspi, self.vanished = Atspi, GLib.GError
        Atspi.init()

    def ask(self, question, *words):
        """What a node answers; None if it has vanished."""
        try:
            return question(*words)
        except self.vanished:
            return None

    def all(self, node=None):
        """Every node with its role and its name."""
        node = node or self.atspi.get_desktop(0)
        yield node, self.ask(node.get_role_name), self.ask(node.get_name) or ''
        for at in range(self.ask(node.get_child_count) or 0):
            child = self.ask(node.get_child_at_index, at)
            if child:
                yield from self.all(child)

    def use(self, role, name, action=lambda node: True):
        """What the action returns for the node with this role and this name; None if there is none."""
        node = next((node for node, *what in self.all() if what == [role, name]), None)
        return node and self.ask(action, node)

    def names(self):
        return [name for _, _, name in self.all()]

    def focused(self):
        """Role and name of what has the keyboard."""
        return next(((role, name) for node, role, name in self.all() if self.has_focus(node)), None)

    def has_focus(self, node):
        states = self.ask(node.get_state_set)
        return states is not None and states.contains(self.atspi.StateType.FOCUSED)


@needs_x11
@unittest.skipUnless(os.path.exists(PROGRAM), 'needs lumora-settings')
class SettingsWindow(X11Session):
    """The window beside the desktop that it controls."""

    def setUp(self):
        super().setUp()
        daemon, address = start_bus(self.folder)
        self.programs.append(daemon)
        self.environment['DBUS_SESSION_BUS_ADDRESS'] = address
        self.environment['XDG_RUNTIME_DIR'] = self.folder
        self.environment['XDG_CONFIG_HOME'] = os.path.join(self.folder, 'config')
        os.mkdir(self.environment['XDG_CONFIG_HOME'])
        with open(os.path.join(self.folder, 'config/user-dirs.dirs'), 'w') as dirs:
            dirs.write('XDG_PICTURES_DIR="$HOME/Pictures"\n')
        os.mkdir(os.path.join(self.folder, 'Pictures'))
        for name, contents in (('red.gif', RED_GREEN), ('blue.gif', BLUE), ('no.gif', b'nothing')):
            self.file('Pictures/' + name, contents)
        self.server = self.start_server('Xvfb', '-screen', '0', '1024x900x24')
        self.start_window_manager(self.server)
        os.environ['DISPLAY'] = self.environment['DISPLAY']
        self.screen = Screen(address)
        self.hand = Hand(self.server)

    def tearDown(self):
        # The window starts a home screen that outlives it.
        self.lumora('stop')
        super().tearDown()

    def open_window(self):
        self.show(PROGRAM, '--root', self.root)
        self.item('frame', 'Lumora')

    def item(self, role, name, *action):
        """Waits until this is shown and the action, if any, returns something true for it."""
        self.eventually(lambda: self.screen.use(role, name, *action), self.screen.names)

    def act(self, role, name):
        self.item(role, name, lambda node: node.do_action(0))

    def press(self, *keys):
        """Presses keys one after the other, each when the one before has had its effect."""
        for key in keys:
            before = self.screen.focused()
            self.hand.press(key)
            self.eventually(lambda: self.screen.focused() not in (before, None), self.screen.focused)

    def go_to(self, role, name):
        while self.screen.focused() != (role, name):
            self.press('Tab')

    def slide(self, name, value):
        self.item('slider', name, lambda node: node.set_current_value(value))

    def says(self, text):
        self.eventually(lambda: text in self.screen.names(), self.screen.names)

    def setting(self, key):
        return json.loads(self.ok('settings', '--json'))[key]

    def test_chooses_and_adjusts_the_wallpaper(self):
        self.open_window()
        self.says('No GIF chosen')
        self.act('push button', 'blue.gif')
        self.says('Playing')
        self.says('blue.gif')
        self.eventually(lambda: self.server.pixel(2, 2) == 0x0000ff)
        self.slide('Speed', 0.5)
        self.slide('Opacity', 0.25)
        self.slide('Blur', 3)
        self.eventually(lambda: [self.setting('SHARED_GIF_' + each)
                                 for each in ('SPEED', 'ALPHA', 'BLUR')] == [0.5, 0.25, 3])
        self.eventually(lambda: self.server.pixel(2, 2) != 0x0000ff)
        self.act('push button', 'Pause')
        self.says('Paused by you')
        self.becomes(False, 'by hand')
        self.act('push button', 'Resume')
        self.becomes(True, 'shown')
        # What the command changes is shown.
        self.ok('alpha', 'shared', '1')
        self.item('slider', 'Opacity', lambda node: node.get_current_value() == 1)
        # A file that is none is refused, and the wallpaper stays.
        self.act('push button', 'no.gif')
        self.eventually(lambda: any('it is not a GIF' in name for name in self.screen.names()),
                        self.screen.names)
        self.assertEqual(os.path.basename(self.shared()['gif']), 'blue.gif')

    def test_follows_a_phone(self):
        self.start(clock='real')
        self.open_window()
        self.act('check box', 'One for each screen')
        self.eventually(lambda: self.setting('MODE_INDEX') == 0)
        self.says('Lock screen')
        self.act('push button', 'red.gif')
        self.says('Paused: another screen is shown')
        self.assertTrue(self.status()['locations']['lockscreen']['set'])
        self.ok('lock')
        self.says('Playing')
        # The window reads the settings after each change, while the next one is made.
        found = []
        self.item('check box', 'End at the dock', lambda node: found.append(node) or True)
        for is_on in (False, True) * 3:
            self.assertTrue(found[0].do_action(0))
            self.eventually(lambda: self.setting('DOCK_ENABLED') == is_on)
        self.slide('Speed', 2)
        self.eventually(lambda: self.setting('LOCKSCREEN_GIF_SPEED') == 2)
        self.assertEqual(self.setting('SHARED_GIF_SPEED'), 1)

    def test_gives_an_output_a_wallpaper_of_its_own(self):
        self.in_session('xrandr', '--setmonitor', 'LEFT', '512/100x900/100+0+0', 'screen')
        self.in_session('xrandr', '--setmonitor', 'RIGHT', '512/100x900/100+512+0', 'none')
        self.show_desktop(self.gif)

        def shows(is_blue):
            self.eventually(lambda: (self.server.pixel(1020, 890) == 0x0000ff) == is_blue)
            self.assertNotEqual(self.server.pixel(4, 890), 0x0000ff)

        def opacities():
            return [json.loads(self.ok('settings', '--json', *words))['SHARED_GIF_ALPHA']
                    for words in ([], ['--output', 'RIGHT'])]

        self.open_window()
        self.says('picture.gif')
        self.go_to('combo box', 'Where')
        self.hand.press('Space')
        self.eventually(lambda: (self.screen.focused() or [None])[0] == 'list item',
                        self.screen.focused)
        for key in ('Down', 'Down', 'Return'):
            self.hand.press(key)
        self.says('Shows the wallpaper of all outputs')
        shows(is_blue=False)
        self.act('push button', 'blue.gif')
        shows(is_blue=True)
        self.says('A wallpaper of its own')
        self.says('blue.gif')
        self.slide('Opacity', 0.25)
        self.eventually(lambda: opacities() == [1, 0.25], opacities)
        self.act('push button', 'Use the common one')
        self.says('Shows the wallpaper of all outputs')
        shows(is_blue=False)

    def test_needs_no_mouse(self):
        self.show_desktop(self.gif)
        self.open_window()
        self.says('picture.gif')
        # Every control is reached once, in the order of the window.
        self.go_to('push button', 'Pause')
        reached = []
        while self.screen.focused() not in reached:
            reached.append(self.screen.focused())
            self.press('Tab')
        self.assertEqual(reached[:6], [
            ('push button', 'Pause'), ('push button', 'Choose…'), ('slider', 'Speed'),
            ('slider', 'Opacity'), ('slider', 'Blur'), ('combo box', 'Size')])
        self.assertEqual(reached[-2:], [('check box', 'Animated wallpapers'),
                                        ('check box', 'Start at login')])
        self.assertNotIn('list item', [role for role, _ in reached])
        # The dialog shows the folder for pictures; what is new there is in the window afterwards.
        self.file('Pictures/a.gif', BLUE)
        self.go_to('push button', 'Choose…')
        self.hand.press('Return')
        self.says('Choose a GIF')

        def has_chosen():
            # The list is filled later.
            self.hand.press('Down')
            self.hand.press('Return')
            time.sleep(0.5)
            return 'Choose a GIF' not in self.screen.names()

        self.eventually(has_chosen)
        self.eventually(lambda: self.server.pixel(2, 2) == 0x0000ff)
        self.item('push button', 'a.gif')
        login = os.path.join(self.folder, 'config/autostart/lumora.desktop')
        self.go_to('check box', 'Start at login')
        for is_on in (True, False):
            self.hand.press('Space')
            self.eventually(lambda: os.path.exists(login) == is_on)

    def place(self, pattern, x, y):
        """Moves the window with this line in the tree of windows."""
        def find():
            return re.search('(0x[0-9a-f]+) ' + pattern, self.in_session('xwininfo', '-root', '-tree'))

        self.eventually(find)
        self.server.xlib.XMoveWindow(self.server.display, ctypes.c_ulong(int(find()[1], 16)), x, y)
        self.server.xlib.XSync(self.server.display, 0)

    def test_takes_dropped_files(self):
        self.show_desktop(self.gif)
        self.open_window()
        self.says('picture.gif')
        self.place('"Lumora": \\("lumora-settings"', 0, 20)
        for name, effect in (("it's <b>.gif", lambda: 'Playing' in self.screen.names()),
                             ('a.txt', lambda: any('it is not a GIF' in each
                                                   for each in self.screen.names()))):
            files = self.show('/usr/bin/python3', os.path.join(FIXTURE, 'file_window.py'),
                              self.file(name, BLUE if name.endswith('gif') else b'nothing'))
            self.place('"Files"', 760, 300)

            def is_taken():
                self.hand.drag((860, 400), (300, 300), pause=0.1)
                time.sleep(1)
                return effect() and self.server.pixel(1000, 880) == 0x0000ff

            self.eventually(is_taken, self.screen.names)
            files.terminate()
            files.wait(20)
        self.says("it's <b>.gif")


if __name__ == '__main__':
    unittest.main(verbosity=2)
