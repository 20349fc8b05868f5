"""Tests recordings of the screen.

usage: record_test.py DIRECTORY-OF-THE-PROGRAMS
"""
import glob
import os
import re
import shutil
import signal
import stat
import subprocess
import sys
import time
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), '../fixture'))
from device import LUMORA, Device

needs_ffmpeg = unittest.skipUnless(shutil.which('ffmpeg'), 'needs ffmpeg')
# A place on the home screen where only the wallpaper is.
PLACE = (4, 250)


def color_in(pixels, width):
    at = 4 * (PLACE[1] * width + PLACE[0])
    return 'red' if pixels[at] > 240 > 15 > pixels[at + 1] else \
        'green' if pixels[at + 1] > 240 > 15 > pixels[at] else str(pixels[at:at + 4])


class Recording(Device):
    def pictures(self, path):
        """Returns the size, and the pixels and the delay in 1/100 s of each frame."""
        data, frames, size = self.pixels(path), [], None
        while data:
            line, data = data.split(b'\n', 1)
            *size, delay = map(int, line.split()[1:])
            length = 4 * size[0] * size[1]
            frames.append((data[:length], delay))
            data = data[length:]
        return tuple(size), frames

    def frames(self, path):
        """Returns the size, and the color and the delay in 1/100 s of each frame."""
        size, frames = self.pictures(path)
        return size, [(color_in(pixels, size[0]), delay) for pixels, delay in frames]

    def bytes_of(self, name):
        with open(os.path.join(self.folder, name), 'rb') as file:
            return file.read()

    def records(self, name, *words):
        """Returns the path of the recording."""
        path = os.path.join(self.folder, name)
        self.ok('record', path, *words)
        self.assertEqual([found for found in os.listdir(self.folder) if 'lumora-' in found], [])
        return path

    def plays(self, *words, clock='manual'):
        self.start(*words, clock=clock)
        self.ok('set', 'shared', self.gif)
        if clock == 'manual':
            # The first frame appears after its delay.
            self.ok('advance', '0.2')
        self.eventually(lambda: self.shared()['frames_shown'])

    def await_picture(self):
        """Waits until a recording has its first picture."""
        self.eventually(lambda: glob.glob(self.folder + '/.lumora-*/frame-00001.png'))

    def frames_step_by_step(self, rate, seconds):
        """Returns what frames() should, found by advancing the clock and taking screenshots."""
        picture, moments, frames = os.path.join(self.folder, 'screen.png'), [], []
        while not moments or moments[-1] < seconds:
            moments.append(min(round(len(moments) / rate, 9), seconds))
        for now, then in zip(moments, moments[1:]):
            self.ok('screenshot', picture)
            self.ok('advance', f'{then - now:.9f}')
            color, delay = self.frames(picture)[1][0][0], round(100 * then) - round(100 * now)
            if frames and frames[-1][0] == color:
                delay += frames.pop()[1]
            frames.append((color, delay))
        return frames

    @needs_ffmpeg
    def test_is_exact_and_reproducible_with_a_manual_clock(self):
        names = ('recording.gif', 'recording.webm')
        made = []
        for take in range(3):
            self.plays('--screen', '200x500')
            if take == 2:
                expected = self.frames_step_by_step(30, 1.01)
            else:
                for name in names:
                    self.records(name, '--seconds', '1.01', '--fps', '30')
                made.append([self.bytes_of(name) for name in names])
                size, frames = self.frames(os.path.join(self.folder, names[0]))
            self.ok('stop')
            self.host.communicate(timeout=20)
            shutil.rmtree(self.root)
        self.assertTrue(made[0] == made[1])
        self.assertEqual((size, frames), ((200, 500), expected))
        self.assertEqual({color for color, _ in frames}, {'red', 'green'})
        self.assertIn(b'webm', made[0][1][:64])

    def test_gives_png_files_and_a_list(self):
        self.plays()
        shown, old = self.shared()['frames_shown'], os.umask(0o027)
        folder = self.records('frames/', '--seconds', '0.5', '--fps', '60')
        os.umask(old)
        self.assertEqual(stat.S_IMODE(os.stat(folder).st_mode), 0o750)
        list_of_frames = self.bytes_of('frames/frames.ffconcat').decode()
        files = re.findall(r'^file (.*)', list_of_frames, re.M)
        self.assertEqual(sorted(os.listdir(folder)), [*files, 'frames.ffconcat'])
        self.assertEqual(files, [f'frame-{number:05}.png' for number in range(1, len(files) + 1)])
        self.assertEqual([self.frames(os.path.join(folder, name))[1][0][0] for name in files],
                         (['red', 'green'] * 5)[:len(files)])
        times = [float(text) for text in re.findall(r'^duration (.*)', list_of_frames, re.M)]
        self.assertEqual(times[1:3], [0.1, 0.117])
        self.assertAlmostEqual(sum(times), 0.5)
        # The clock has been advanced, so the next recording begins with what is on the screen now.
        self.assertGreater(self.shared()['frames_shown'], shown)
        self.ok('screenshot', self.folder + '/now.png')
        self.records('more/', '--seconds', '0.01')
        self.assertTrue(self.pixels(self.folder + '/more/frame-00001.png') ==
                        self.pixels(self.folder + '/now.png'))

    @needs_ffmpeg
    def test_follows_real_time_until_it_is_interrupted(self):
        self.plays(clock='real')
        path = os.path.join(self.folder, 'recording.gif')
        begin = time.monotonic()
        with subprocess.Popen([LUMORA, '--root', self.root, 'record', path, '--seconds', '600'],
                              stdout=subprocess.PIPE, text=True) as recorder:
            self.await_picture()
            time.sleep(1)
            recorder.send_signal(signal.SIGINT)
            said = recorder.communicate(timeout=60)[0]
            self.assertEqual(recorder.returncode, 0)
        passed = time.monotonic() - begin
        (width, _), frames = self.pictures(path)
        # The time in the status bar may change, so a color may come twice in a row.
        self.assertTrue(all(one != other for (one, _), (other, _) in zip(frames, frames[1:])))
        self.assertEqual({color_in(pixels, width) for pixels, _ in frames}, {'red', 'green'})
        self.assertGreaterEqual(min(delay for _, delay in frames), 2)
        length = sum(delay for _, delay in frames) / 100
        self.assertTrue(0.5 < length < passed, (length, passed))
        self.assertIn(f'{len(frames)} frames in {path}, ', said)

    @needs_ffmpeg
    def test_keeps_what_there_is_if_the_screen_turns_or_ends(self):
        for words, reason in ((['rotate', 'left'], 'turned or resized'), (['stop'], 'has ended')):
            self.plays(clock='real')
            path = os.path.join(self.folder, words[0] + '.gif')
            with subprocess.Popen([LUMORA, '--root', self.root, 'record', path, '--seconds', '600'],
                                  stdout=subprocess.DEVNULL, stderr=subprocess.PIPE,
                                  text=True) as recorder:
                self.await_picture()
                self.ok(*words)
                errors = recorder.communicate(timeout=60)[1]
                self.assertEqual(recorder.returncode, 1)
            self.assertIn(reason, errors)
            self.assertEqual(self.frames(path)[0], (390, 844))
            self.lumora('stop')
            self.host.communicate(timeout=20)

    def test_leaves_nothing_behind_if_the_encoder_fails(self):
        self.start(self.gif)
        encoder = os.path.join(self.file('bin', b'') + '.d', 'ffmpeg')
        os.mkdir(os.path.dirname(encoder))
        target = self.file('recording.gif', b'old')
        before = sorted(os.listdir(self.folder))

        def record(path):
            return subprocess.Popen([LUMORA, '--root', self.root, 'record', target, '--seconds', '0.1'],
                                    env=dict(os.environ, PATH=path), stdout=subprocess.DEVNULL,
                                    stderr=subprocess.PIPE, text=True)

        usable = os.path.dirname(encoder) + ':/usr/bin:/bin'
        for script, reason in ((None, 'install the package ffmpeg'),
                               ('kill -9 $$', 'was ended by signal 9'),
                               ('exit 3', 'exit code 3'),
                               ('echo no room >&2; echo more >&2; exit 1', 'ffmpeg says: no room\n')):
            if script:
                with open(encoder, 'w', encoding='utf-8') as file:
                    file.write('#!/bin/sh\n' + script)
                os.chmod(encoder, 0o755)
            with record(usable if script else '/nowhere') as recorder:
                errors = recorder.communicate(timeout=60)[1]
                self.assertEqual((recorder.returncode, errors.count('\n')), (1, 1), errors)
            self.assertIn(reason, errors)
            self.assertEqual(sorted(os.listdir(self.folder)), before)
        with open(encoder, 'w', encoding='utf-8') as file:
            file.write(f'#!/bin/sh\necho > {self.folder}/begun; exec sleep 600')
        with record(usable) as recorder:
            self.eventually(lambda: os.path.exists(self.folder + '/begun'))
            recorder.send_signal(signal.SIGINT)
            self.assertIn('interrupted', recorder.communicate(timeout=60)[1])
            self.assertEqual(recorder.returncode, 1)
        os.remove(self.folder + '/begun')
        self.assertEqual((sorted(os.listdir(self.folder)), self.bytes_of(target)), (before, b'old'))

    def test_refuses_what_it_cannot_write(self):
        full = os.path.dirname(self.file('picture', b''))
        nowhere = os.path.join(self.folder, 'nowhere')
        for name, reason in (('a.mp4', 'end its name in'), ('a', 'end its name in'),
                             (full + '/', 'not empty'), (self.gif + '/', 'Not a directory'),
                             (nowhere + '/a.gif', 'No such file')):
            self.assertIn(reason, self.fails(1, 'record', name))
        self.fails(3, 'record', nowhere + '/')
        self.start()
        self.assertIn('No such file', self.fails(1, 'record', nowhere + '/a/'))
        self.assertIn('50', self.fails(1, 'record', self.folder + '/a.gif', '--fps', '51'))
        for words in (['--fps', '0'], ['--seconds', '0'], ['--seconds', '-1'], ['--fps', 'fast']):
            self.fails(2, 'record', self.folder + '/a.gif', *words)
        self.assertFalse(os.path.exists(nowhere))


if __name__ == '__main__':
    unittest.main(verbosity=2)
