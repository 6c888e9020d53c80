"""Compares the functions that a shared library exports with those that its header declares."""
import re
import subprocess
import sys


def declared(header):
    text = open(header, encoding="utf-8").read()
    text = re.sub(r"/\*.*?\*/", " ", text, flags=re.S)
    text = re.sub(r"^\s*#(?:.*\\\n)*.*$", " ", text, flags=re.M)
    return set(re.findall(r"\bQM_API\b[^;()]*?(\w+)\s*\(", text))


def exported(nm, library):
    lines = subprocess.run([nm, "-D", "--defined-only", library], check=True, capture_output=True,
                           text=True).stdout.splitlines()
    return {line.split()[-1].split("@")[0] for line in lines}


def main():
    nm, library, header = sys.argv[1:]
    documented, visible = declared(header), exported(nm, library)
    for name in sorted(documented - visible):
        print(f"declared, but not exported: {name}")
    for name in sorted(visible - documented):
        print(f"exported, but not declared: {name}")
    print(f"{len(documented & visible)} functions are both declared and exported")
    return 0 if documented and documented == visible else 1


if __name__ == "__main__":
    sys.exit(main())
