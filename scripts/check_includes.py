"""Checks all includes against the drawings in docs/architecture.md.

The drawings show components, which are folders, with an arrow from each component to those
directly below it. A file may include headers of its own component and of those that arrows reach
in any number of steps. Every arrow must be in use, and arrows must not form a cycle. Nor must the
files: a header and the source file of the same name, which count as one, must not depend on
themselves.
"""
import collections
import os
import re
import subprocess
import sys

PROJECT = os.path.join(os.path.dirname(os.path.abspath(__file__)), '..')
DRAWING = 'docs/architecture.md'


def drawing():
    """Returns the components directly below each component."""
    with open(os.path.join(PROJECT, DRAWING), encoding='utf-8') as file:
        text = ''.join(re.findall(r'```mermaid\n(.*?)```', file.read(), re.DOTALL))
    folders = dict(re.findall(r'(\w+)\["([\w/]+)"\]', text))
    below = {folder: set() for folder in folders.values()}
    for upper, lower in re.findall(r'^ *(\w+)(?:\[.*\])? --> (\w+)', text, re.MULTILINE):
        below[folders[upper]].add(folders[lower])
    return below


def reachable(component, below):
    components, new = set(), {component}
    while new:
        components |= new
        new = set().union(*(below[one] for one in new)) - components
    return components


def component_of(path, components):
    """Returns the innermost component that contains the file, or None."""
    folder = os.path.dirname(path)
    while folder and folder not in components:
        folder = os.path.dirname(folder)
    return folder or None


def includes():
    """Yields pairs of a file and a header of the project that it includes."""
    listed = subprocess.run(['git', 'ls-files', '*.h', '*.cpp', '*.mm'], cwd=PROJECT, text=True,
                            capture_output=True, check=True).stdout.split()
    for path in listed:
        with open(os.path.join(PROJECT, path), encoding='utf-8') as file:
            for name in re.findall(r'^#(?:include|import) "([^"]+)"', file.read(), re.MULTILINE):
                for candidate in (name, 'src/' + name):
                    if candidate in listed:
                        yield path, candidate


def main():
    below = drawing()
    findings = []
    used = set()
    units = collections.defaultdict(set)
    for component in below:
        if any(component in reachable(lower, below) for lower in below[component]):
            findings.append(f'{DRAWING}: {component} depends on itself')
    for path, header in includes():
        unit, other = os.path.splitext(path)[0], os.path.splitext(header)[0]
        if unit != other:
            units[unit].add(other)
        source, target = component_of(path, below), component_of(header, below)
        if source is None or source == target:
            continue
        used.add((source, target))
        if target not in reachable(source, below):
            findings.append(f'{path} includes {header}: no arrows lead from {source} to {target}')
    for component, lower in ((component, lower) for component in below for lower in below[component]):
        if (component, lower) not in used:
            findings.append(f'{DRAWING}: no include uses the arrow from {component} to {lower}')
    findings += [f'{unit} depends on itself through {lower}' for unit in sorted(units)
                 for lower in sorted(units[unit]) if unit in reachable(lower, units)]
    print('\n'.join(findings) or
          f'includes: {len(used)} dependencies between {len(below)} components, all downward')
    return 1 if findings else 0


if __name__ == '__main__':
    sys.exit(main())
