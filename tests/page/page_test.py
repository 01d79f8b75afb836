"""Runs a session and looks at its page in headless Chromium.

usage: page_test.py IMAGE JOB

IMAGE is the folder of a machine's image, JOB the job that is played. Results are printed as the other
test programs print theirs. Without Chromium everything is skipped.
"""
import csv
import html.parser
import json
import pathlib
import re
import shutil
import struct
import subprocess
import sys
import tempfile
import time

# A job may be called anything.
HOSTILE = '</script><script>document.title="broken"</script> & "q" <b>'
ENTRY = re.compile(r" *\d+\.\d{3} s +(\S+) → (\S+) +(\w+)\(.*?(?: = (.*))?$", re.S)


class Node:
    def __init__(self, tag, attributes):
        self.tag, self.attributes, self.children = tag, dict(attributes), []

    def text(self):
        return "".join(c if isinstance(c, str) else c.text() for c in self.children)

    def all(self, test):
        found = [self] if test(self) else []
        for child in self.children:
            if isinstance(child, Node):
                found += child.all(test)
        return found

    def with_attribute(self, name, value=None):
        return self.all(lambda n: name in n.attributes and value in (None, n.attributes[name]))

    def by_id(self, name):
        return self.with_attribute("id", name)[0]


class Reader(html.parser.HTMLParser):
    """The tree of a page."""

    EMPTY = {"meta", "link", "img", "input", "br"}

    def __init__(self, text):
        super().__init__()
        self.stack = [Node("", [])]
        self.feed(text)
        self.root = self.stack[0]

    def handle_starttag(self, tag, attributes):
        node = Node(tag, attributes)
        self.stack[-1].children.append(node)
        if tag not in self.EMPTY:
            self.stack.append(node)

    def handle_endtag(self, tag):
        while len(self.stack) > 1 and self.stack.pop().tag != tag:
            pass

    def handle_data(self, data):
        self.stack[-1].children.append(data)


class Session:
    """A session that was played into a folder, and its page in the browser."""

    def __init__(self, image, job, folder, browser, solids=True):
        self.folder, self.browser = folder, browser
        shutil.copytree(image, folder / "machine", symlinks=True)
        if not solids:
            (folder / "machine/drive_c/Drawboard/Solids.dll").unlink()
        rename = lambda name: f"gears {HOSTILE}" if name == "gears" else name
        text = json.loads(pathlib.Path(job).read_text("utf-8"))
        text["name"] = "Tour " + HOSTILE
        for step in text["steps"]:
            step.update({key: rename(step[key]) for key in ("name", "of", "on") if key in step})
        (folder / "job.json").write_text(json.dumps(text), "utf-8")
        program = folder / "machine/drive_c/Drawboard/session.exe"
        run = subprocess.run([program, "--job", folder / "job.json", "--out", folder],
                             capture_output=True, text=True, check=False)
        assert run.returncode == 0, run.stdout[-2000:] + run.stderr
        self.page = folder / "session.html"
        self.document = json.loads((folder / "document.json").read_text("utf-8"))
        # A call's text may go over several lines.
        timeline = (folder / "session.txt").read_text("utf-8").split("\nSteps\n")[0]
        entries = re.split(r"\n(?= *\d+\.\d{3} s |-- )", timeline)
        self.calls = [m.groups() for m in map(ENTRY.match, entries) if m]
        self.dom = self.look(self.page.as_uri())

    def look(self, address):
        """The tree of a page when its scripts have run; no script may have failed."""
        run = subprocess.run(
            [self.browser, "--headless=new", "--no-sandbox", "--disable-dev-shm-usage",
             "--allow-file-access-from-files", f"--user-data-dir={self.folder}/browser",
             "--enable-logging=stderr", "--virtual-time-budget=20000", "--dump-dom", address],
            capture_output=True, text=True, timeout=120, check=False)
        errors = [line for line in run.stderr.splitlines() if "Uncaught" in line or "CSP" in line]
        assert run.returncode == 0 and not errors, errors or run.stderr[-2000:]
        return Reader(run.stdout).root

    def try_out(self, script, width=1280):
        """Runs a script on the page in a frame of that width; `d` is its document. Gives its value."""
        frame = self.folder / "frame.html"
        frame.write_text(
            f"<!doctype html><iframe id=f style='width:{width}px;height:800px;border:0'></iframe>"
            f"<script>f.onload = () => {{ const d = f.contentDocument;"
            f"document.body.dataset.answer = JSON.stringify((() => {{ {script} }})()); }};"
            f"f.src = 'session.html';</script>", "utf-8")
        body = self.look(frame.as_uri()).with_attribute("data-answer")
        assert body, "the script gave nothing"
        return json.loads(body[0].attributes["data-answer"])

    def figure(self, name):
        return self.dom.with_attribute("data-figure", name)[0]

    def card(self, name):
        cards = self.dom.with_attribute("data-object", name)
        assert len(cards) == 1, (name, len(cards))
        return cards[0]

    def solid(self, record):
        """Number of triangles in an object's model file, else in the GLB beside its file, None without one."""
        if is_model(record):
            path = record["modelPath"].replace("\\", "/").removeprefix("C:/")
            return (self.folder / "machine/drive_c" / path).read_text().count("endfacet")
        path = record["file"].replace("\\", "/").removeprefix("C:/").rsplit(".", 1)[0] + ".glb"
        file = self.folder / "machine/drive_c" / path
        return triangles(file) if record["file"] and file.exists() else None


def is_model(record):
    return record["modelPath"].lower().endswith(".c3d")


def triangles(path):
    data = path.read_bytes()
    scene = json.loads(data[20:20 + struct.unpack_from("<I", data, 12)[0]])
    meshes = [sum(scene["accessors"][p["indices"]]["count"] for p in m["primitives"])
              for m in scene["meshes"]]
    return sum(meshes[n["mesh"]] for n in scene["nodes"] if "mesh" in n) // 3


def units_of(reference):
    fields = re.findall(r"KC1\|D\|Data\|([^|]*)\|[^|]*\|(.*?)<@EL>", reference)
    return {name: "" if unit == "ND" else unit for name, unit in fields}


def expect(found, wanted, what=""):
    assert found == wanted, f"{what}: found {found!r}, expected {wanted!r}"


# --- what is tested ---


def page_is_whole_and_stands_alone(session):
    expect(session.dom.all(lambda n: n.tag == "html")[0].attributes.get("data-ready"), "yes")
    expect(session.dom.by_id("title").text(), "Tour " + HOSTILE)
    assert "broken" not in session.dom.all(lambda n: n.tag == "title")[0].text().split("–")[-1]
    source = session.page.read_text("utf-8")
    expect(re.findall(r"""(?:src|href)=["']?(?!data:|#)[\w/:.]+|url\([^)]*|@import.*""", source), [],
           "addresses outside")
    without_text = [n for n in session.dom.all(lambda n: n.tag == "img") if "alt" not in n.attributes]
    expect(without_text, [], "pictures without a text")


def objects_show_the_values_of_the_document(session):
    expect(int(session.figure("objects").attributes["data-value"]), len(session.document["objects"]))
    compared = 0
    for record in session.document["objects"]:
        card = session.card(record["name"])
        for key in ("caption", "file", "filePath"):
            assert record[key] in card.text(), (record["name"], key)
        for name, value in record.get("physicalProperties", {}).items():
            shown = card.with_attribute("data-body", name)
            if name == "Mass":
                expect(len(shown), 1, "masses")
            for node in shown:
                assert node.text().startswith(value + " "), (name, node.text(), value)
        boxes = [n for g in ("inputs", "results", "added", "foreign") for n in card.with_attribute("data-group", g)]
        shown = {n.attributes["data-name"]: n.text() for box in boxes for n in box.with_attribute("data-name")}
        units = units_of(record["connection"])
        folded = [re.match(r"(.*_)(\d+) … \1(\d+): (\d+) values", n.text())
                  for box in boxes for n in box.all(lambda n: n.tag == "summary") if "…" in n.text()]
        rows = {m[1]: int(m[4]) for m in folded}
        # A drawing has the values of its protocol alone.
        for name in record["parameters"] or units:
            row = re.sub(r"\d+$", "", name)
            if row in rows and name not in shown:
                rows[row] -= 1
            elif name in record["parameters"]:
                wanted = f"{record['parameters'][name]} {units.get(name, '')}".strip()
                expect(shown.get(name), wanted, f"{record['name']} {name}")
                compared += 1
        expect(set(rows.values()) - {0}, set(), "folded rows")
    assert compared > 300, compared


def results_bear_units_and_formulas(session):
    gear = session.card(session.document["objects"][0]["name"])
    row = [n for n in gear.all(lambda n: n.tag == "tr") if n.children and n.children[0].text() == "aw"][0]
    assert "ISO 21771" in row.text() and row.text().endswith(" mm"), row.text()
    for record in session.document["objects"]:
        for box in session.card(record["name"]).with_attribute("data-group", "results"):
            for each in box.all(lambda n: n.tag == "tr"):
                assert each.all(lambda n: n.attributes.get("class") == "formula"), each.text()


def bill_is_the_csv(session):
    with open(session.folder / "bom.csv", newline="", encoding="utf-8") as file:
        wanted = list(csv.reader(file))
    rows = session.dom.by_id("bill-table").all(lambda n: n.tag == "tr")
    expect([[cell.text() for cell in row.children] for row in rows], wanted)
    expect(int(session.figure("parts").attributes["data-value"]), sum(int(r[1]) for r in wanted[1:]))
    # What the CAD weighs, views included, not what the calculations estimate; and every part has the
    # texts that the options ask for since the middle of the tour.
    def mass(record):
        return float(record.get("physicalProperties", {}).get("Mass", 0))
    weighed = {f"{mass(each) + sum(mass(o) for o in session.document['objects'] if o['viewOf'] in ids):.6g} kg"
               for each in session.document["objects"] if mass(each)
               for ids in [[each["protocolId"], *each["formerIds"]]]}
    columns = {name: [row[i] for row in wanted[1:]] for i, name in enumerate(wanted[0])}
    assert len(columns["Body mass"]) > 10 and set(columns["Body mass"]) <= weighed, (columns, weighed)
    assert all(columns["Calculation"]) and "SLEEVE" in columns["Calculation"], columns["Calculation"]


def timeline_has_all_calls_and_marks_failures(session):
    # The CAD weighs no assembly; nothing else fails on the tour. Every caller has a name.
    failed = [code.text() for item in session.dom.with_attribute("class", "failures")
              for code in item.all(lambda n: n.tag == "code")]
    expect({re.search(r"(\w+)\(", call)[1] for call in failed}, {"GetPhysicalPropertiesEx"})
    failures = len(failed)
    expect({call[0] for call in session.calls},
           {"session", "user", "Quillmar", "Hexaplan"}, "callers")
    assert len(session.calls) > 1000, len(session.calls)
    expect(int(session.figure("calls").attributes["data-value"]), len(session.calls), "calls")
    expect(int(session.figure("failures").attributes["data-value"]), failures, "failures")
    answer = session.try_out("""
      const shown = () => Number(d.getElementById('shown-calls').dataset.shown);
      const press = id => d.getElementById(id).click();
      const list = d.getElementById('calls'), answer = {};
      answer.few = d.querySelectorAll('.call').length;
      press('with-stores'); answer.all = shown();
      list.scrollTop = list.scrollHeight; list.dispatchEvent(new Event('scroll'));
      answer.drawn = d.querySelectorAll('.call').length;
      const caller = d.querySelector('.caller[value=Hexaplan]');
      caller.click(); answer.hexaplan = shown(); caller.click();
      const search = d.getElementById('search');
      search.value = 'Com_OpenProtocol'; search.dispatchEvent(new Event('input', {bubbles: true}));
      answer.found = shown();
      search.value = ''; press('only-failures'); answer.failures = shown();
      answer.marked = [...d.querySelectorAll('.call')].every(row => row.classList.contains('bad'));
      return answer;""")
    expect(answer["all"], len(session.calls))
    expect(answer["hexaplan"], sum(call[0] == "Hexaplan" for call in session.calls))
    expect(answer["failures"], failures)
    expect(answer["marked"], True)
    assert 0 < answer["found"] < len(session.calls), answer
    assert answer["few"] < 80 and answer["drawn"] < 80, answer


def steps_say_how_they_came_out(session):
    steps = json.loads((session.folder / "job.json").read_text("utf-8"))["steps"]
    shown = session.dom.by_id("steps-body").children
    expect(len(shown), len(steps))
    for node, step in zip(shown, steps):
        assert step.get("name", "") in node.text() and "done" in node.text(), node.text()


def sheets_are_drawn(session):
    for record in session.document["objects"]:
        if "placement" in record:
            assert session.card(record["name"]).all(lambda n: n.tag == "img"), record["name"]
    names = [record["placement"]["drawingFile"] for record in session.document["objects"] if "placement" in record]
    expect({name.rsplit(".", 1)[1].lower() for name in names}, {"dxf", "wmf"}, "files on the sheet")


def solids_are_drawn_when_they_are_opened(session):
    expect(session.dom.all(lambda n: n.tag == "canvas"), [], "canvas before anything is opened")
    solids = [session.solid(record) for record in session.document["objects"]]
    expect(int(session.dom.by_id("solids-note").attributes["data-solids"]),
           sum(count is not None for count in solids))
    assembly = session.folder / f"machine/drive_c/Drawboard/Document/{session.document['name']}.glb"
    first = next(i for i, count in enumerate(solids) if count is not None)
    for address, wanted in (("#turn", triangles(assembly)), (f"#turn-{first}", solids[first])):
        viewer = session.look(session.page.as_uri() + address).by_id("viewer")
        expect(viewer.with_attribute("id", "viewer-message")[0].text(), "", address)
        expect(int(viewer.attributes["data-triangles"]), wanted, address)
        assert int(viewer.attributes["data-pixels"]) > 2000, viewer.attributes
        expect(len(viewer.all(lambda n: n.tag == "canvas")), 1)


def page_fits_a_narrow_phone(session):
    assert session.try_out("return d.documentElement.scrollWidth;", 360) <= 360
    wide = session.try_out("""
      for (const box of d.querySelectorAll('details')) box.open = true;
      return [...d.body.querySelectorAll('main *')].filter(n => n.getBoundingClientRect().right > 360.5)
        .map(n => n.outerHTML.slice(0, 200)).slice(0, 5);""", 360)
    expect(wide, [], "wider than the phone")


def without_solids_parts_are_outlines(session):
    image, job = sys.argv[1:]
    folder = session.folder / "outlines"
    folder.mkdir()
    plain = Session(image, job, folder, session.browser, solids=False)
    assert "outlines" in plain.dom.by_id("solids-note").text()
    # What came in a model file needs no modeller.
    expect(len(plain.dom.all(lambda n: "turn" in n.attributes.get("class", "").split())),
           sum(is_model(record) for record in plain.document["objects"]), "buttons")
    for record in plain.document["objects"]:
        if record["kind"] in ("parametric part", "shaft", "cam"):
            assert plain.card(record["name"]).all(lambda n: n.tag == "img"), record["name"]


TESTS = [page_is_whole_and_stands_alone, objects_show_the_values_of_the_document,
         results_bear_units_and_formulas, bill_is_the_csv, timeline_has_all_calls_and_marks_failures,
         steps_say_how_they_came_out, sheets_are_drawn, solids_are_drawn_when_they_are_opened,
         page_fits_a_narrow_phone, without_solids_parts_are_outlines]


def main(image, job):
    browser = next(filter(None, map(shutil.which, ("chromium", "chromium-browser", "google-chrome"))), None)
    if browser is None:
        print("*** CHROMIUM IS NOT INSTALLED: THE SESSION'S PAGE IS NOT TESTED ***")
        for test in TESTS:
            print(f"[  SKIPPED ] Page.{test.__name__} (0 ms)")
        return 0
    failed = 0
    with tempfile.TemporaryDirectory(prefix="page-test-", ignore_cleanup_errors=True) as folder:
        session = Session(image, job, pathlib.Path(folder), browser)
        for test in TESTS:
            start = time.monotonic()
            try:
                test(session)
                word = "      OK"
            except Exception as error:  # pylint: disable=broad-except
                print(f"{type(error).__name__}: {error}")
                word = " FAILED "
                failed += 1
            print(f"[ {word} ] Page.{test.__name__} ({round((time.monotonic() - start) * 1000)} ms)")
    print(f"[==========] {len(TESTS)} tests ran. ({failed} failed)")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
