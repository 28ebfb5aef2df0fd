"""How a script drives the program, through drive.exe."""

import os
import subprocess
import time
from pathlib import Path


class Failure(Exception):
    pass


class NotCopied(Failure):
    """A foreign program could not be brought to copy: no fault of ours, and nothing to compare."""


class Drive:
    """Commands to drive.exe, which waits, with bounds, for everything that takes its time."""

    def __init__(self):
        self.process = subprocess.Popen(["wine", Path(os.environ["NXCLIP_TOOLS"], "drive.exe")], stdin=subprocess.PIPE,
                                        stdout=subprocess.PIPE)

    def __call__(self, *fields):
        self.process.stdin.write(("\t".join(map(str, fields)) + "\n").encode())
        self.process.stdin.flush()
        head = self.process.stdout.readline().decode().split()
        if len(head) != 2:
            raise Failure(f"the driver ended at {fields[0]}")
        lines = [self.process.stdout.readline().decode().rstrip("\r\n") for _ in range(int(head[1]))]
        if head[0] != "ok":
            raise Failure(f"{' '.join(map(str, fields))}: " + "\n".join(lines))
        return "\n".join(lines)

    def close(self):
        self.process.stdin.close()
        try:
            self.process.wait(30)
        except subprocess.TimeoutExpired:
            self.process.kill()


def wait_for(what, condition, seconds=15):
    end = time.monotonic() + seconds
    while True:
        result = condition()
        if result:
            return result
        if time.monotonic() > end:
            raise Failure(f"waited {seconds} s in vain for {what}")
        time.sleep(0.01)
