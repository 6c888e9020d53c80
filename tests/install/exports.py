"""Compares the functions that a shared library exports with those that its header declares and with those that
its reference describes, and the reference with the header it is written from."""
import filecmp
import pathlib
import re
import subprocess
import sys
import tempfile


def declared(header):
    text = open(header, encoding="utf-8").read()
    text = re.sub(r"/\*.*?\*/", " ", text, flags=re.S)
    text = re.sub(r"^\s*#(?:.*\\\n)*.*$", " ", text, flags=re.M)
    return set(re.findall(r"\bQM_API\b[^;()]*?(\w+)\s*\(", text))


def exported(nm, library):
    lines = subprocess.run([nm, "-D", "--defined-only", library], check=True, capture_output=True,
                           text=True).stdout.splitlines()
    return {line.split()[-1].split("@")[0] for line in lines}


def described(reference):
    text = "\n".join(page.read_text(encoding="utf-8") for page in reference.glob("*.md"))
    return set(re.findall(r'^<a id="(\w+)"></a>$', text, flags=re.M))


def unexplained(header):
    """Fields of records with neither a comment behind them nor one at the head of their paragraph."""
    text = open(header, encoding="utf-8").read()
    records = re.findall(r"^typedef struct (\w+) \{\n(.*?)^\}", text, flags=re.S | re.M)
    return [f"{name}: {field}" for name, body in records for paragraph in body.split("\n\n")
            if not paragraph.lstrip().startswith("/*")
            for field in re.findall(r"^ +([^/;\n]+);(?! +/\*)", paragraph, flags=re.M)]


def outdated(reference, generator):
    """Pages that differ from what the header's comments give now."""
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run([sys.executable, generator, folder], check=True)
        names = {page.name for place in (reference, pathlib.Path(folder)) for page in place.glob("*.md")}
        same, _, _ = filecmp.cmpfiles(reference, folder, names, shallow=False)
        return sorted(names - set(same))


# The library's own functions; all others are those of the controllers' interface, whose number is fixed.
OURS = {"qm_assume_controller_type", "qm_controller_type", "qm_last_error", "qm_list_files", "qm_measure_text",
        "qm_set_clock", "qm_set_message_handler", "qm_version"}
OTHERS = 169


def main():
    nm, library, header, reference, generator = sys.argv[1:]
    reference = pathlib.Path(reference)
    sets = {"declared": declared(header), "exported": exported(nm, library), "described": described(reference)}
    everything = set().union(*sets.values())
    bad = False
    for what, names in sets.items():
        for name in sorted(everything - names):
            print(f"not {what}: {name}")
            bad = True
    if {name for name in everything if name.startswith("qm_")} != OURS or len(everything - OURS) != OTHERS:
        print(f"the functions are not {OTHERS} and {', '.join(sorted(OURS))}")
        bad = True
    for field in unexplained(header):
        print(f"a field has no comment: {field}")
        bad = True
    for page in outdated(reference, generator):
        print(f"docs/reference/{page} is not what scripts/reference writes; run it")
        bad = True
    print(f"{len(set.intersection(*sets.values()))} functions are declared, exported and described")
    return 1 if bad or not everything else 0


if __name__ == "__main__":
    sys.exit(main())
