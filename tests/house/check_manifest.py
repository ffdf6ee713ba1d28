"""Whether a program says that it knows every Windows from 7 on: Windows treats it as one for an older
system otherwise.

usage: check_manifest.py PROGRAM...
"""
import sys

KNOWN = {
    "Windows 7": b"{35138b9a-5d96-4fbd-8e2d-a2440225f93a}",
    "Windows 8": b"{4a2f28e3-53b9-4441-ba9c-d69d4a4a6e38}",
    "Windows 8.1": b"{1f676c76-80e1-4239-95bb-83d0f6d0da78}",
    "Windows 10 and later": b"{8e0f7a12-bfb3-4fe8-b9a5-48fd50a15a9a}",
}


def main():
    faults = 0
    for program in sys.argv[1:]:
        with open(program, "rb") as file:
            content = file.read()
        for system, identifier in KNOWN.items():
            if identifier not in content:
                print(f"{program}: its manifest does not name {system}")
                faults += 1
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
