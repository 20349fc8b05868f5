#!/usr/bin/env python3
"""Writes the page of the device's settings application, in the format that the preference loader
reads. Every control stores a text under a key of Lumora's settings, and posts one notification.

usage: preference_page.py PAGE.plist
"""
import plistlib
import sys

SETTINGS = 'com.brightfen.lumorapreferences'
UPDATE = 'com.brightfen.lumora.updateWallpaper'
LOCATIONS = [('SHARED', 'Both Screens'), ('LOCKSCREEN', 'Lock Screen'),
             ('HOMESCREEN', 'Home Screen')]
FACTORS = ['0', '0.25', '0.5', '0.75', '1', '1.5', '2', '4']
OPACITIES = ['0.2', '0.4', '0.6', '0.8', '1']
RADII = ['0', '2', '4', '8', '16', '32']


def control(cell, label, key, default, notification, **more):
    posted = {'PostNotification': notification} if notification else {}
    return {'cell': cell, 'label': label, 'key': key, 'default': default, 'defaults': SETTINGS,
            **posted, **more}


def switch(label, key, default, notification):
    return control('PSSwitchCell', label, key, default, notification, trueValue='TRUE',
                   falseValue='FALSE')


def choice(label, key, default, notification, values, titles):
    return control('PSLinkListCell', label, key, default, notification, validValues=values,
                   validTitles=titles, detail='PSListItemsController')


def percent(values):
    return [f'{float(value) * 100:.0f} %' for value in values]


def group(label, footer=''):
    return {'cell': 'PSGroupCell', 'label': label, **({'footerText': footer} if footer else {})}


def controls_of(location, label):
    return [
        group(label),
        choice('Scaling', location + '_SCALING_MODE', 'FIT', UPDATE, ['FIT', 'FILL', 'FULLSCREEN'],
               ['Show All', 'Fill', 'Stretch']),
        choice('Speed', location + '_GIF_SPEED', '1', 'kLWGIFViewGIFSpeedNeedsUpdating', FACTORS,
               ['Still', *percent(FACTORS[1:])]),
        choice('Opacity', location + '_GIF_ALPHA', '1', 'kLWGIFViewGIFAlphaNeedsUpdating', OPACITIES,
               percent(OPACITIES)),
        choice('Blur', location + '_GIF_BLUR', '0', 'kLWGIFViewGIFBlurNeedsUpdating', RADII,
               ['Sharp', *(f'{radius} Pixels' for radius in RADII[1:])]),
    ]


def page():
    return {
        'entry': {'cell': 'PSLinkCell', 'label': 'Lumora'},
        'title': 'Lumora',
        'items': [
            group('', 'Choose a GIF with the command lumora set, in a shell. If a change does not '
                      'show, or after a change of Wallpapers, restart the home screen.'),
            switch('Animate Wallpapers', 'ENABLED', 'TRUE', None),
            switch('End at the Dock', 'DOCK_ENABLED', 'TRUE', UPDATE),
            choice('Wallpapers', 'MODE_INDEX', '1',
                   'kLWGIFViewNeedsToRemoveUnneededViewNotification', ['1', '0'],
                   ['One for Both Screens', 'One for Each Screen']),
            *(item for location in LOCATIONS for item in controls_of(*location)),
        ],
    }


def main():
    path, = sys.argv[1:]
    with open(path, 'wb') as file:
        plistlib.dump(page(), file, sort_keys=False)


if __name__ == '__main__':
    main()
