"""Puts back what was changed, also when whoever changed it is killed.

`Undo` hands its commands to this very file, run as a program of its own. That one runs those that are left, the last first,
when its input ends, which it does however the other program ends.
"""

import json
import os
import subprocess
import sys

LONGEST = 60  # seconds that a command may take


class Undo:
    def __init__(self):
        # In a session of its own: what the terminal sends to all of its programs must not reach it.
        self.process = subprocess.Popen([sys.executable, "-B", os.path.realpath(__file__)], stdin=subprocess.PIPE, text=True,
                                        stdout=subprocess.DEVNULL, start_new_session=True)

    def send(self, name, command):
        self.process.stdin.write(json.dumps([name, command]) + "\n")
        self.process.stdin.flush()

    def add(self, name, *command):
        """Before the change itself is made. The same name again takes the place of the earlier one."""
        self.send(name, command)

    def drop(self, name):
        """What was to be put back is, already."""
        self.send(name, None)

    def close(self):
        """Again does nothing."""
        self.process.stdin.close()
        self.process.wait()


def main():
    commands = {}
    for line in sys.stdin:
        name, command = json.loads(line)
        commands.pop(name, None)
        if command:
            commands[name] = command
    for command in reversed(list(commands.values())):
        try:
            subprocess.run(command, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                           timeout=LONGEST, check=False)
        except (OSError, subprocess.TimeoutExpired):
            pass  # The others are no less needed.


if __name__ == "__main__":
    main()
