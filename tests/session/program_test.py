"""Runs the session program as its user does: goes on with what a session left, and interrupts it.

usage: program_test.py IMAGE

IMAGE is the folder of a machine's image. Results are printed as the other test programs print theirs.
"""
import json
import pathlib
import shutil
import signal
import struct
import subprocess
import sys
import tempfile
import time

JOB = {
    "document": "Drive",
    "steps": [
        {"do": "calculate", "name": "gears", "calculation": "GEAR1", "inputs": {"z1": 17}},
        {"do": "calculate", "name": "bolts", "calculation": "THRJOIN", "inputs": {"N": 4}},
        {"do": "old part", "name": "old shaft", "calculation": "SHAFT", "kind": "shaft",
         "values": {"ElNum": 2, "d_1": 35, "l_1": 40, "d_2": 50, "l_2": 90, "npodpor": 2,
                    "PShaftID_0": 1, "PXrel_0": 20, "PShaftID_1": 2, "PXrel_1": 70, "material": 3}},
        {"do": "change", "name": "old shaft", "inputs": {"d_1": 36}},
        {"do": "format", "name": "sheet", "scale": 0.5},
        {"do": "calculate", "name": "surface", "calculation": "SURFACE", "inputs": {"Ra": 0.8}},
    ],
}


class Run:
    """A session in a folder of its own, which holds its machine and what it left."""

    def __init__(self, image, folder, job, after=None):
        self.folder = folder
        shutil.copytree(after.folder / "machine" if after else image, folder / "machine", symlinks=True)
        (folder / "job.json").write_text(json.dumps(job), "utf-8")
        self.arguments = [folder / "machine/drive_c/Drawboard/session.exe", "--job", folder / "job.json",
                          "--out", folder, "--save-job", folder / "saved.json", "--progress", "always"]
        if after:
            self.arguments.append("--continue")

    def to_end(self):
        run = subprocess.run(self.arguments, capture_output=True, text=True, check=False)
        assert run.returncode == 0, run.stdout[-2000:] + run.stderr
        return self

    def interrupted(self, when):
        """Ends it when `when` says so of what it has shown until then; gives that."""
        with subprocess.Popen(self.arguments, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE) as run:
            shown = b""
            while not when(shown):
                part = run.stderr.read1(1024)
                assert part, "it ended by itself"
                shown += part
            run.send_signal(signal.SIGINT)
            run.stderr.read()
        return run.returncode

    def saved(self):
        return json.loads((self.folder / "saved.json").read_text("utf-8"))

    def objects(self):
        document = json.loads((self.folder / "document.json").read_text("utf-8"))
        return {record["name"]: record for record in document["objects"]}


def identities(run):
    return {name: record["protocolId"] for name, record in run.objects().items()}


def expect(found, wanted, what=""):
    assert found == wanted, f"{what}: found {found!r}, expected {wanted!r}"


def a_saved_job_changes_nothing_and_a_changed_one_changes_in_place(image, folders):
    first = Run(image, next(folders), JOB).to_end()
    again = Run(image, next(folders), first.saved(), after=first).to_end()
    expect(again.objects(), first.objects(), "objects after the saved job")
    job = again.saved()
    expect(job, first.saved(), "saved job")
    steps = {step["name"]: step for step in job["steps"] if step["do"] != "change"}
    steps["gears"].update(standard="ANSI")
    steps["old shaft"].update(standard="DIN")
    steps["old shaft"]["values"].update(ElNum=3, d_2=60, d_3=30, l_3=25, PShaftID_1=3, PXrel_1=10, material=1)
    steps["sheet"].update(standard="DIN", scale=0.25)
    steps["surface"]["inputs"]["Ra"] = 1.6
    changed = Run(image, next(folders), job, after=again).to_end()
    expect(identities(changed), identities(first), "identities after the changed job")
    objects = changed.objects()
    shaft = objects["old shaft"]["parameters"]
    expect([shaft[name] for name in ("#spiCount", "d_1", "d_2", "d_3", "mat", "PX_1")],
           ["3", "36", "60", "30", "1", "140"], "the old shaft")
    for name, values in (("old shaft", ["Standard|DIN"]), ("symbol", ["Ra|1.6|"]),
                         ("format", ["Standard|DIN", "PrfStd|DIN", "xxScale|0.25|"])):
        for value in values:
            assert "|" + value in objects[name]["connection"], (name, value)
    expect([o["extendedData"]["Standard"] for n, o in objects.items() if n.startswith("GEAR1")], ["ANSI"])
    left = changed.folder / "machine/drive_c/Drawboard/Document"
    expect([path.name for path in left.iterdir() if "older" in path.name], [], "the older document")


def check_whole(folder):
    for path in folder.rglob("*"):
        if path.suffix == ".new":
            raise AssertionError(f"{path} is half a file")
        if path.suffix == ".json":
            json.loads(path.read_text("utf-8"))
        if path.suffix == ".glb":
            expect(struct.unpack_from("<I", path.read_bytes(), 8)[0], path.stat().st_size, path)
        for suffix, end in ((".step", b"END-ISO-10303-21;"), (".svg", b"</svg>"), (".html", b"</html>")):
            if path.suffix == suffix and path.parent.name != "Page":
                assert path.read_bytes().rstrip().endswith(end), path


def an_interrupted_session_leaves_whole_files(image, folders):
    # The first part that is saved is a gear, which takes long enough to be interrupted.
    moments = [lambda shown: b"saving " in shown, lambda shown: b"2/6" in shown, lambda shown: b"1/6" in shown]
    for i, moment in enumerate(moments):
        run = Run(image, next(folders), JOB)
        expect(run.interrupted(moment), 3, f"exit status at moment {i}")
        check_whole(run.folder)
        assert not (run.folder / "saved.json").exists(), "a job that was not carried out"
        if i == 0:
            expect(len(run.objects()), 6, "objects that were saved")
    Run(image, next(folders), JOB, after=run).to_end()


TESTS = [a_saved_job_changes_nothing_and_a_changed_one_changes_in_place,
         an_interrupted_session_leaves_whole_files]


def main(image):
    failed = 0
    with tempfile.TemporaryDirectory(prefix="session-test-", ignore_cleanup_errors=True) as folder:
        def make_folders():
            number = 0
            while True:
                number += 1
                path = pathlib.Path(folder) / str(number)
                path.mkdir()
                yield path
        folders = make_folders()
        for test in TESTS:
            start = time.monotonic()
            try:
                test(image, folders)
                word = "      OK"
            except Exception as error:  # pylint: disable=broad-except
                print(f"{type(error).__name__}: {error}")
                word = " FAILED "
                failed += 1
            print(f"[ {word} ] Session.{test.__name__} ({round((time.monotonic() - start) * 1000)} ms)")
    print(f"[==========] {len(TESTS)} tests ran. ({failed} failed)")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
