#!/usr/bin/env python3
"""A volume that never answers: a FUSE file system on MOUNTPOINT whose statfs blocks, as a dead
network share or a stuck FUSE server does.

    stalled_fs.py MOUNTPOINT
"""

import stat
import sys
import threading

try:
    from fusepy import FUSE, Operations
except ImportError:  # the module's name outside Debian
    from fuse import FUSE, Operations


class StalledFs(Operations):
    def getattr(self, path, fh=None):
        return {'st_mode': stat.S_IFDIR | 0o755, 'st_nlink': 2}

    def readdir(self, path, fh):
        return ['.', '..']

    def statfs(self, path):
        threading.Event().wait()  # until the server is killed


if __name__ == '__main__':
    FUSE(StalledFs(), sys.argv[1], foreground=True)
