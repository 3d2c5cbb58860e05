#!/usr/bin/env python3
"""A card that keeps wrong bytes: a FUSE passthrough of BACKING on MOUNTPOINT that, once a file
named NAME has been written through it, answers reads of that file's first byte with a changed
byte. Files are opened with keep_cache, as a block device's pages stay cached, so only a reader
that drops the cache (or reads uncached) sees what this card really holds.

    altering_fs.py BACKING MOUNTPOINT NAME
"""

import errno
import os
import sys

try:
    from fusepy import FUSE, FuseOSError, Operations
except ImportError:  # the module's name outside Debian
    from fuse import FUSE, FuseOSError, Operations


class AlteringFs(Operations):
    def __init__(self, backing, name):
        self.backing = backing
        self.name = name
        self.written = set()

    def _real(self, path):
        return os.path.join(self.backing, path.lstrip('/'))

    def _call(self, function, *args):
        try:
            return function(*args)
        except OSError as error:
            raise FuseOSError(error.errno or errno.EIO)

    def getattr(self, path, fh=None):
        st = self._call(os.lstat, self._real(path))
        return {key: getattr(st, key) for key in ('st_mode', 'st_nlink', 'st_uid', 'st_gid', 'st_size',
                                                 'st_atime', 'st_mtime', 'st_ctime')}

    def readdir(self, path, fh):
        return ['.', '..'] + self._call(os.listdir, self._real(path))

    def statfs(self, path):
        st = os.statvfs(self._real(path))
        return {key: getattr(st, key) for key in ('f_bsize', 'f_frsize', 'f_blocks', 'f_bfree', 'f_bavail',
                                                 'f_files', 'f_ffree', 'f_namemax')}

    def access(self, path, mode):
        if not os.access(self._real(path), mode):
            raise FuseOSError(errno.EACCES)

    def unlink(self, path):
        self.written.discard(path)
        return self._call(os.unlink, self._real(path))

    def rename(self, old, new):
        self._call(os.rename, self._real(old), self._real(new))
        if old in self.written:
            self.written.discard(old)
            self.written.add(new)

    def _passed(function):
        return lambda self, path, *args: self._call(function, self._real(path), *args)

    mkdir, rmdir, chmod, chown, utimens = map(_passed, (os.mkdir, os.rmdir, os.chmod, os.chown, os.utime))

    def truncate(self, path, length, fh=None):
        with open(self._real(path), 'r+b') as f:
            f.truncate(length)

    def open(self, path, fi, flags=None, mode=0o777):
        fi.fh = self._call(os.open, self._real(path), fi.flags if flags is None else flags, mode)
        fi.keep_cache = 1
        return 0

    def create(self, path, mode, fi):
        return self.open(path, fi, os.O_WRONLY | os.O_CREAT | os.O_EXCL, mode)

    def read(self, path, size, offset, fi):
        data = self._call(os.pread, fi.fh, size, offset)
        if offset == 0 and data and path in self.written and os.path.basename(path) == self.name:
            data = bytes([data[0] ^ 0x01]) + data[1:]
        return data

    def write(self, path, data, offset, fi):
        self.written.add(path)
        return self._call(os.pwrite, fi.fh, data, offset)

    def flush(self, path, fi):
        return 0

    def fsync(self, path, datasync, fi):
        return self._call(os.fsync, fi.fh)

    def release(self, path, fi):
        return self._call(os.close, fi.fh)


if __name__ == '__main__':
    backing, mountpoint, name = sys.argv[1:4]
    FUSE(AlteringFs(backing, name), mountpoint, foreground=True, raw_fi=True, nothreads=True)
