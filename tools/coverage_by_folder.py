#!/usr/bin/env python3
"""Prints the coverage of each folder from gcovr's JSON summary: lines and branches."""
import collections
import json
import os
import sys

folders = collections.defaultdict(lambda: [0, 0, 0, 0])
for file in json.load(open(sys.argv[1]))['files']:
    for folder in (os.path.dirname(file['filename']), 'all'):
        for i, key in enumerate(('line_covered', 'line_total', 'branch_covered', 'branch_total')):
            folders[folder][i] += file[key]
for folder, (lines, all_lines, branches, all_branches) in sorted(folders.items(), key=lambda f: (f[0] == 'all', f)):
    print(f'{folder:40} lines {lines:6} of {all_lines:6} {100 * lines / max(all_lines, 1):6.1f}%'
          f'   branches {branches:6} of {all_branches:6} {100 * branches / max(all_branches, 1):6.1f}%')
