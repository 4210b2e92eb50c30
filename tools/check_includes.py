#!/usr/bin/env python3
"""Holds the table of who may include whom among the folders of src/, and tells every include that breaks it.

Run at any place; takes no arguments. A line for each fault, exit 1 when there is one.

Headers are strict: a header reaches the areas below its own and no others, so that no two areas need each other to be
read. A .cpp may reach sideways and up, by named operations. What no file may do stands in FORBIDDEN.
"""
import os
import re
import sys

ROOT = os.path.normpath(os.path.join(os.path.dirname(os.path.abspath(__file__)), '..', 'src'))

# What the headers of an area may include besides their own area, the interfaces of the platform and VALUES.
HEADERS = {
    'foundation': set(),
    'platform': {'foundation'},
    'platform/headless': {'foundation'},
    'platform/sdl': {'foundation', 'platform/headless'},
    'storage': {'foundation'},
    'definition': {'foundation'},
    'script': {'foundation', 'storage', 'definition', 'frame'},
    'structure': {'foundation', 'definition', 'script'},
    'graphics': {'foundation', 'storage'},
    'animation': {'foundation', 'storage', 'graphics', 'script', 'sound', 'input', 'frame'},
    'sound': {'foundation', 'storage', 'script', 'frame'},
    'text': {'foundation', 'storage', 'graphics', 'script'},
    'input': {'foundation', 'graphics', 'script', 'frame'},
    'network': {'foundation', 'script'},
    'frame': {'foundation', 'storage', 'definition', 'script', 'structure', 'graphics', 'animation', 'sound', 'text',
              'input', 'network'},
}

# Small headers of values and opaque handles, which stand for themselves and may be included anywhere.
VALUES = {'graphics/geometry.h', 'frame/handles.h'}

# Of an area above it, a lower one sees only these headers.
ONLY = {
    ('script', 'frame'): {'frame/timer.h'},  # the receiver of timers, from which script objects derive
    ('input', 'frame'): {'frame/timer.h'},  # likewise, for the cursor that blinks
    ('animation', 'frame'): {'frame/timer.h'},  # likewise, for effects that run
    ('sound', 'frame'): {'frame/timer.h'},  # likewise, for what is played at times of its own
}

# The script types that stand with the area whose work they do.
SCRIPT_TYPES = {'definition/cnv_loader.h'}

# A .cpp may include any area but these: the lowest areas know nothing above them. The root of all objects writes to the
# window's log, hence the frame.
SOURCES_FORBIDDEN = {
    'foundation': set(HEADERS) - {'foundation', 'platform', 'frame'},
    'platform': set(HEADERS) - {'platform', 'foundation'},
    'platform/headless': set(HEADERS) - {'platform/headless', 'platform', 'foundation'},
    'platform/sdl': set(HEADERS) - {'platform/sdl', 'platform/headless', 'platform', 'foundation'},
}
BACKENDS = {'platform/headless', 'platform/sdl', 'platform/host'}
HOST = 'platform/host'

INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]')


def area_of(path):
    """The area of a path below src/: the longest folder that the table knows; None for none of ours."""
    folder = os.path.dirname(path)
    while folder:
        if folder in HEADERS or folder == HOST:
            return folder
        folder = os.path.dirname(folder)
    return None


def fault(path, included, quoted):
    area, other = area_of(path), area_of(included)
    if re.match(r'SDL2?/|SDL[._]', included) and area != 'platform/sdl':
        return 'only platform/sdl sees SDL'
    if area == HOST or other is None or other == area:
        return None
    if not quoted:
        return 'a header of ours stands between quotes'
    if not os.path.exists(os.path.join(ROOT, included)):
        return 'there is no such header'
    if other in BACKENDS and area not in BACKENDS:
        return 'nobody but the host knows a backend'
    if included in VALUES or other == 'platform':
        return None
    if path.endswith('.h'):
        if path in SCRIPT_TYPES and other == 'script':
            return None
        if other not in HEADERS[area]:
            return 'a header of %s may not include %s' % (area, other)
        only = ONLY.get((area, other))
        if only and included not in only:
            return 'of %s, headers of %s see %s alone' % (other, area, ', '.join(sorted(only)))
    elif other in SOURCES_FORBIDDEN.get(area, set()):
        return '%s may not include %s' % (area, other)
    return None


def main():
    faults = []
    for folder, _, names in sorted(os.walk(ROOT)):
        for name in sorted(names):
            if not name.endswith(('.h', '.cpp', '.def')):
                continue
            path = os.path.relpath(os.path.join(folder, name), ROOT).replace(os.sep, '/')
            if area_of(path) is None:
                faults.append('src/%s: stands in no area of the table' % path)
                continue
            with open(os.path.join(ROOT, path), encoding='utf-8') as f:
                for number, line in enumerate(f, 1):
                    m = INCLUDE.match(line)
                    why = m and fault(path, m.group(2), m.group(1) == '"')
                    if why:
                        faults.append('src/%s:%d: includes "%s": %s' % (path, number, m.group(2), why))
    print('\n'.join(faults) if faults else 'includes: as the table has them')
    return 1 if faults else 0


if __name__ == '__main__':
    sys.exit(main())
