"""Whether exceptions find their way in a 32-bit program: no entry of its unwind table has no length.

usage: check_unwind.py OBJDUMP PROGRAM...

The search for the frame of an address may stop at such an entry, though another one that starts at
the same place holds the address; the program then ends instead of handling its exception.
"""
import re
import subprocess
import sys


def entries(objdump, program):
    """(first address, address behind the last) of every function in the table."""
    listing = subprocess.run([objdump, "--dwarf=frames", program], capture_output=True, text=True,
                             check=True).stdout
    return re.findall(r" FDE .* pc=([0-9a-f]+)\.\.([0-9a-f]+)$", listing, re.MULTILINE)


def main():
    objdump, *programs = sys.argv[1:]
    faults = 0
    for program in programs:
        found = entries(objdump, program)
        assert len(found) > 1000, f"the unwind table of {program} was not read"
        for begin, end in found:
            if begin == end:
                print(f"{program}: the entry at {begin} has no length")
                faults += 1
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
