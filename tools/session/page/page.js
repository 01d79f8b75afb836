'use strict';
// Builds the page from its one block of data. Texts of the data become text nodes, never markup.

const data = JSON.parse(document.getElementById('data').textContent);
const STORES = ['Keelcomm', 'Keellink'];
const SHEET_KINDS = ['drawing', 'symbol', 'format'];
const LONG_ROW = 24;  // values of a numbered row that are shown one by one

const byId = id => document.getElementById(id);

// An element with attributes and children; children that are null or empty texts are left out.
function make(name, attributes, ...children) {
  const node = document.createElement(name);
  for (const [key, value] of Object.entries(attributes || {})) {
    if (key.startsWith('on')) node.addEventListener(key.slice(2), value);
    else if (value !== null && value !== undefined && value !== false) node.setAttribute(key, value === true ? '' : value);
  }
  node.append(...children.flat(Infinity).filter(child => child !== null && child !== undefined && child !== ''));
  return node;
}

const counted = (count, one, many = one + 's') => `${count.toLocaleString('en')} ${count === 1 ? one : many}`;
const seconds = microseconds => `${(microseconds / 1e6).toFixed(3)} s`;
const fileText = number => byId(`file-${number}`).textContent;
const placeOf = new Map(data.objects.map((object, i) => [object.name, i]));
const stepsOf = name => data.steps.map((step, i) => [step, i]).filter(([step]) => step.objects.includes(name));

// What has no caption in the CAD bears the name of the step that made it.
const headline = object => object.caption || stepsOf(object.name)[0]?.[0].name || object.name;

function linkTo(name) {
  return placeOf.has(name) ? make('a', {href: `#o-${placeOf.get(name)}`}, name) : name;
}

// A feature is seen on its part, a user part as the data wizard was given it.
function pictureOf(object) {
  if (object.picture !== null) return object.picture;
  if (object.featureOf && placeOf.has(object.featureOf)) return data.objects[placeOf.get(object.featureOf)].picture;
  return stepsOf(object.name)[0]?.[0].pictures[0] ?? null;
}

// Lines become `weight` times as wide, for small pictures.
function image(number, alt, weight = 1) {
  const svg = atob(fileText(number)).replace(/stroke-width="([\d.e-]+)"/g, (all, width) => `stroke-width="${width * weight}"`);
  return make('img', {src: 'data:image/svg+xml;base64,' + btoa(svg), alt, loading: 'lazy'});
}

function turnButton(title, file, label) {
  return make('button', {type: 'button', class: 'turn screen', 'aria-label': `Turn ${title} in 3D`,
    onclick: () => Viewer.open(title, fileText(file))}, label || 'Turn in 3D');
}

// --- head ---

function showHead() {
  const failures = data.calls.rows.filter(row => row[7]).length;
  const failed = data.steps.filter(step => step.failure).length;
  const parts = data.bill.rows.reduce((sum, row) => sum + row.quantity, 0);
  const end = Math.max(0, ...data.steps.map(step => step.end), ...data.calls.rows.slice(-1).map(row => row[0]));
  document.title = `${data.job} – session`;
  byId('title').textContent = data.job;
  byId('kicker').textContent = data.document ? `Session in the document “${data.document}”, ${data.unit}` : 'Session without a document';
  const figures = [
    ['steps', 'Steps', data.steps.length, failed ? `${failed} failed` : 'all done', failed],
    ['objects', 'Objects in the model', data.objects.length],
    ['parts', 'Parts to make or buy', parts],
    ['calls', 'Border calls', data.calls.rows.length],
    ['failures', 'Calls that failed', failures, '', failures],
    ['time', 'Time', (end / 1e6).toFixed(1) + ' s'],
  ];
  byId('figures').append(...figures.map(([id, term, value, note, bad]) =>
    make('div', {class: bad ? 'bad' : null},
      make('dt', {}, term),
      make('dd', {'data-figure': id, 'data-value': value}, typeof value === 'number' ? value.toLocaleString('en') : value,
        note ? make('small', {}, ' ' + note) : null))));
}

function showContents() {
  for (const section of document.querySelectorAll('main > section')) {
    if (section.hidden) continue;
    byId('sections').append(make('li', {}, make('a', {href: `#${section.id}`}, section.querySelector('h2').textContent)));
  }
}

// --- tree ---

const ownerOf = object => placeOf.get(object.featureOf || object.viewOf);

function showTree() {
  const below = new Map();
  data.objects.forEach((object, i) => {
    const owner = ownerOf(object);
    const key = owner === undefined || owner === i ? -1 : owner;
    below.set(key, [...(below.get(key) || []), i]);
  });
  const branch = (key, open) => make('ul', {}, (below.get(key) || []).map(i => {
    const object = data.objects[i];
    const node = make('a', {href: `#o-${i}`},
      make('span', {class: 'thumb'}, pictureOf(object) === null ? null : image(pictureOf(object), '', 3)),
      make('span', {}, headline(object), make('small', {}, object.kind)));
    return make('li', {}, node, below.has(i) && !open.has(i) ? branch(i, new Set([...open, i])) : null);
  }));
  byId('tree').append(make('p', {class: 'root'}, data.document || ''), branch(-1, new Set()));
  const wide = matchMedia('(min-width: 1000px)');
  const follow = () => { byId('tree-box').open = wide.matches; };
  wide.addEventListener('change', follow);
  follow();
}

// --- assembly, bill of materials ---

function showAssembly() {
  const solids = data.objects.filter(object => object.solid !== null).length;
  const strip = make('div', {class: 'strip'}, data.objects
    .filter(object => object.picture !== null && !SHEET_KINDS.includes(object.kind))
    .map(object => make('a', {href: `#o-${placeOf.get(object.name)}`, title: headline(object)}, image(object.picture, headline(object), 2))));
  const modeller = data.assembly !== null && data.assembly !== undefined;
  const text = modeller ? `${counted(solids, 'solid')}. Each can be turned by itself, from its entry under “Parts”.`
    : 'This session had no modeller of solids: the pictures are outlines, and only bodies from model files can be turned in 3D.';
  byId('assembly-body').append(
    make('p', {class: modeller ? null : 'notice', id: 'solids-note', 'data-solids': solids}, text), strip,
    !modeller ? '' : make('p', {}, turnButton(`Assembly ${data.document}`, data.assembly, 'Turn the assembly in 3D')));
  byId('assembly').hidden = !data.objects.length;
}

function showBill() {
  const {columns, rows} = data.bill;
  const isNumber = value => /^-?[\d.]+( \S+)?$/.test(value);
  const kinds = columns.map((_, k) => rows.every(row => !row.values[k] || isNumber(row.values[k])) ? 'number' : null);
  byId('bill').hidden = !rows.length;
  byId('bill-body').append(make('div', {class: 'wide'}, make('table', {class: 'bill', id: 'bill-table'},
    make('caption', {}, 'Equal parts are one row; views of a calculation count with their part, bolts as often as their joint has them. ' +
      'Masses are of one piece. The same table is in bom.csv.'),
    make('thead', {}, make('tr', {}, ['Pos', 'Qty', ...columns].map((name, k) => make('th', {scope: 'col', class: k > 1 ? kinds[k - 2] : k ? 'number' : null}, name)))),
    make('tbody', {}, rows.map((row, i) => make('tr', {},
      make('th', {scope: 'row', 'data-label': 'Pos'}, String(i + 1)),
      make('td', {'data-label': 'Qty', class: 'number'}, String(row.quantity)),
      row.values.map((value, k) => make('td', {'data-label': columns[k], class: kinds[k]}, value))))))));
}

// --- objects ---

// Values of a numbered row stand together; a long row is folded.
function foldRows(values) {
  const rowOf = name => (name.match(/^(.*_)\d+$/) || [])[1];
  const counts = new Map();
  for (const {name} of values) counts.set(rowOf(name), (counts.get(rowOf(name)) || 0) + 1);
  const shown = [], folded = new Map();
  for (const value of values) {
    const row = rowOf(value.name);
    if (!row || counts.get(row) <= LONG_ROW) shown.push(value);
    else folded.set(row, [...(folded.get(row) || []), value]);
  }
  return {shown, folded};
}

function valueTable(title, values) {
  return make('table', {class: 'values', 'aria-label': title}, make('tbody', {}, values.map(value =>
    make('tr', {},
      make('th', {scope: 'row'}, value.name),
      make('td', {}, value.meaning, value.formula ? make('small', {class: 'formula'}, value.formula) : null),
      make('td', {class: 'number', 'data-name': value.name, 'data-value': value.value},
        value.value, value.unit ? make('span', {class: 'unit'}, ' ' + value.unit) : null)))));
}

function foldedRow(row, values) {
  const [first, last] = [values[0], values[values.length - 1]];
  const box = make('details', {class: 'long'}, make('summary', {}, `${first.name} … ${last.name}: ${values.length} values`,
    first.meaning ? make('small', {}, ` ${first.meaning}`) : null));
  box.addEventListener('toggle', () => {
    if (box.open && box.children.length === 1) {
      box.append(make('p', {class: 'list'}, values.map(value => value.value).join(', ') + (first.unit ? ` ${first.unit}` : '')));
    }
  });
  return box;
}

function valuesBox(title, group, values) {
  if (!values.length) return null;
  const {shown, folded} = foldRows(values);
  return make('details', {class: 'box', 'data-group': group},
    make('summary', {}, title, ' ', make('span', {class: 'count'}, String(values.length))),
    shown.length ? valueTable(title, shown) : null,
    [...folded].map(([row, list]) => foldedRow(row, list)));
}

function facts(object) {
  const steps = stepsOf(object.name);
  const rows = [
    ['Calculation', object.calculation],
    ['View of', object.viewOf && linkTo(object.viewOf)],
    ['Feature of', object.featureOf && linkTo(object.featureOf)],
    ['File', object.file && make('code', {}, object.file)],
    ['Given as', object.filePath && make('code', {}, object.filePath)],
    ['Drawing', object.drawingFile && make('code', {}, object.drawingFile)],
    ['Model', object.modelPath && make('code', {}, object.modelPath)],
    ['Protocol', object.protocolId && make('code', {}, object.protocolId)],
    ['Changed', object.changes && counted(object.changes, 'time')],
    ['By steps', steps.length && steps.map(([step, i]) => make('a', {class: 'step-link', href: `#s-${i}`, title: step.title}, String(i + 1)))],
  ].filter(([, value]) => value);
  return make('dl', {class: 'facts'}, rows.map(([term, value]) => [make('dt', {}, term), make('dd', {}, value)]));
}

function keyFigures(object) {
  const wanted = object.body.filter(value => ['Mass', 'Volume', 'Area'].includes(value.name));
  return wanted.length ? make('dl', {class: 'key'}, wanted.map(value => make('div', {},
    make('dt', {}, value.meaning),
    make('dd', {'data-body': value.name, 'data-value': value.value}, value.value, make('span', {class: 'unit'}, ' ' + value.unit))))) : null;
}

function card(object, i) {
  const texts = entries => entries.map(([name, value]) => ({name, value, unit: '', meaning: '', formula: ''}));
  const number = pictureOf(object);
  return make('article', {class: number === null ? 'card plain' : 'card', id: `o-${i}`, 'aria-labelledby': `t-${i}`, 'data-object': object.name},
    number === null ? null : make('figure', {}, image(number, `Picture of ${headline(object)}`),
      object.solid === null ? null : turnButton(headline(object), object.solid)),
    make('div', {class: 'about'},
      make('h3', {id: `t-${i}`}, headline(object)),
      make('p', {class: 'name'}, make('span', {class: 'badge'}, object.kind), ' ', headline(object) !== object.name ? object.name : ''),
      keyFigures(object), facts(object)),
    make('div', {class: 'boxes'},
      valuesBox('Inputs', 'inputs', object.inputs), valuesBox('Results', 'results', object.results),
      valuesBox('Parameters of the CAD', 'added', object.added), valuesBox('Body', 'body', object.body),
      valuesBox('For the bill of materials', 'bom', texts(Object.entries(object.bom))), valuesBox('Feature states', 'states', texts(Object.entries(object.states))),
      valuesBox('Further values in the protocol', 'foreign', object.foreign)));
}

function showObjects() {
  data.objects.forEach((object, i) => {
    byId(SHEET_KINDS.includes(object.kind) ? 'sheets-body' : 'model-body').append(card(object, i));
  });
  for (const id of ['model', 'sheets']) byId(id).hidden = !byId(`${id}-body`).children.length;
}

// --- steps ---

function showSteps() {
  byId('steps').hidden = !data.steps.length;
  byId('steps-body').append(...data.steps.map((step, i) => make('li', {id: `s-${i}`, class: step.failure ? 'bad' : null},
    make('h3', {}, step.title),
    make('p', {class: 'outcome'}, make('span', {class: 'badge'}, step.kind), ' ', step.failure ? '✗ failed' : '✓ done', ` in ${seconds(step.end - step.begin)}`),
    step.failure ? make('p', {class: 'failure'}, step.failure) : null,
    step.pictures.map(number => make('figure', {}, image(number, `Drawing of ${step.name}`))),
    step.results.length ? make('ul', {}, step.results.map(line => make('li', {}, line))) : null,
    step.objects.length ? make('p', {class: 'links'}, 'Objects: ', step.objects.flatMap((name, k) => [k ? ', ' : null, linkTo(name)])) : null,
    step.inputs.length ? make('details', {class: 'box'}, make('summary', {}, 'Inputs ', make('span', {class: 'count'}, String(step.inputs.length))),
      make('p', {class: 'list'}, step.inputs.flatMap(([name, value]) => [make('span', {}, `${name} = ${value}`), ' ']))) : null)));
}

// --- timeline ---

const calls = data.calls.rows.map(([time, duration, from, to, name, args, result, failed]) => ({
  time, duration, from: data.calls.names[from], to: data.calls.names[to], name: data.calls.names[name], args, result, failed: failed === 1}));
const isStore = call => STORES.includes(call.to);
const callText = call => `${call.name}(${call.args})${call.result ? ' = ' + call.result : ''}`;

function showSummary() {
  const pairs = new Map();
  for (const call of calls) {
    const key = `${call.from} → ${call.to}`;
    const entry = pairs.get(key) || {from: call.from, to: call.to, count: 0, failed: 0};
    entry.count++;
    entry.failed += call.failed ? 1 : 0;
    pairs.set(key, entry);
  }
  const rows = [...pairs.values()].sort((a, b) => b.count - a.count);
  byId('timeline-summary').append(make('table', {class: 'summary'},
    make('thead', {}, make('tr', {}, ['Who calls whom', 'Calls', 'Failed'].map(name => make('th', {scope: 'col'}, name)))),
    make('tbody', {}, rows.map(row => make('tr', {}, make('td', {}, `${row.from} → ${row.to}`),
      make('td', {class: 'number'}, row.count.toLocaleString('en')),
      make('td', {class: row.failed ? 'number bad' : 'number'}, row.failed ? String(row.failed) : '–'))))));
  byId('timeline-summary').append(make('p', {class: 'hint'}, 'A call has failed when it raised an error or answered 0. ' +
    'No failures are: “no” as the answer to a question, closing what is closed already, and a list that is asked for again with enough room.'));
  const failures = calls.filter(call => call.failed);
  if (failures.length) {
    byId('timeline-summary').append(make('details', {class: 'box'},
      make('summary', {}, 'Calls that failed ', make('span', {class: 'count'}, String(failures.length))),
      make('ul', {class: 'failures'}, failures.slice(0, 200).map(call =>
        make('li', {}, make('code', {}, `${seconds(call.time)} ${call.from} → ${call.to} ${callText(call)}`))))));
  }
}

// Only the rows that are in sight stand in the document: all rows have one height.
class CallList {
  constructor() {
    this.box = byId('calls');
    this.space = byId('calls-space');
    this.callers = new Set();
    this.rows = [];
    this.active = -1;
    this.makeCallers();
    byId('filters').addEventListener('input', () => this.filter());
    byId('filters').addEventListener('submit', event => event.preventDefault());
    this.box.addEventListener('scroll', () => this.draw());
    this.box.addEventListener('keydown', event => this.key(event));
    new ResizeObserver(() => this.draw()).observe(this.box);
    this.filter();
  }

  makeCallers() {
    const counts = new Map();
    for (const call of calls) counts.set(call.from, (counts.get(call.from) || 0) + 1);
    for (const [name, count] of [...counts].sort((a, b) => b[1] - a[1])) {
      byId('callers').append(make('label', {class: 'chip'},
        make('input', {type: 'checkbox', value: name, class: 'caller'}), ' ', name, ' ', make('span', {class: 'count'}, count.toLocaleString('en'))));
    }
  }

  filter() {
    const callers = new Set([...document.querySelectorAll('.caller:checked')].map(box => box.value));
    const words = byId('search').value.toLowerCase().split(/\s+/).filter(Boolean);
    const onlyFailures = byId('only-failures').checked, stores = byId('with-stores').checked;
    const fits = call => (!callers.size || callers.has(call.from)) && (!onlyFailures || call.failed) &&
      (stores || onlyFailures || !isStore(call)) &&
      (!words.length || words.every(word => `${call.from} ${call.to} ${callText(call)}`.toLowerCase().includes(word)));
    const plain = !words.length && !onlyFailures;
    this.rows = [];
    let step = 0;
    for (const call of calls) {
      for (; plain && step < data.steps.length && data.steps[step].begin <= call.time; step++) this.rows.push({step});
      if (fits(call)) this.rows.push(call);
    }
    for (; plain && step < data.steps.length; step++) this.rows.push({step});
    this.active = -1;
    const shown = this.rows.filter(row => row.step === undefined).length;
    byId('shown-calls').textContent = `${shown.toLocaleString('en')} of ${counted(calls.length, 'call')}`;
    byId('shown-calls').dataset.shown = shown;
    byId('shown-calls').dataset.all = calls.length;
    byId('call-detail').hidden = true;
    this.box.scrollTop = 0;
    this.draw();
  }

  draw() {
    const height = this.height = parseFloat(getComputedStyle(this.box).getPropertyValue('--row'));
    this.space.style.height = `${height * this.rows.length}px`;
    const first = Math.max(0, Math.floor(this.box.scrollTop / height) - 5);
    const last = Math.min(this.rows.length, Math.ceil((this.box.scrollTop + this.box.clientHeight) / height) + 5);
    this.space.replaceChildren(...this.rows.slice(first, last).map((row, i) => this.row(row, first + i)));
    if (this.active >= 0) this.box.setAttribute('aria-activedescendant', `call-${this.active}`);
    else this.box.removeAttribute('aria-activedescendant');
  }

  row(row, i) {
    const attributes = {id: `call-${i}`, role: 'option', 'aria-selected': String(i === this.active), 'aria-posinset': i + 1,
      'aria-setsize': this.rows.length, style: `top:${i * this.height}px`, onclick: () => this.select(i)};
    if (row.step !== undefined) {
      return make('div', {...attributes, class: 'call step'}, `${row.step + 1}. ${data.steps[row.step].title}`);
    }
    return make('div', {...attributes, class: row.failed ? 'call bad' : 'call'},
      make('span', {class: 'time'}, seconds(row.time)),
      make('span', {class: 'who'}, `${row.from} → ${row.to}`),
      make('span', {class: 'what'}, row.failed ? make('strong', {}, '✗ failed ') : null, callText(row)));
  }

  select(i) {
    this.active = Math.min(this.rows.length - 1, Math.max(0, i));
    const top = this.active * this.height;
    if (top < this.box.scrollTop) this.box.scrollTop = top;
    const below = top + this.height - this.box.clientHeight;
    if (below > this.box.scrollTop) this.box.scrollTop = below;
    this.draw();
    const row = this.rows[this.active], detail = byId('call-detail');
    detail.hidden = !row;
    if (!row) return;
    detail.replaceChildren(...(row.step !== undefined ? [make('a', {href: `#s-${row.step}`}, data.steps[row.step].title)] : [
      make('p', {}, `${row.from} → ${row.to} at ${seconds(row.time)}, took ${row.duration.toLocaleString('en')} µs`, row.failed ? make('strong', {class: 'bad'}, ' – failed') : null),
      make('pre', {}, `${row.name}(${row.args})\n= ${row.result}`)]));
  }

  key(event) {
    const page = Math.max(1, Math.floor(this.box.clientHeight / this.height) - 1);
    const steps = {ArrowDown: 1, ArrowUp: -1, PageDown: page, PageUp: -page, Home: -Infinity, End: Infinity};
    if (!(event.key in steps) || event.ctrlKey || event.metaKey) return;
    event.preventDefault();
    this.select(this.active + steps[event.key]);
  }
}

// --- on paper, and by address ---

function prepareForPaper() {
  let opened = [];
  addEventListener('beforeprint', () => {
    opened = [...document.querySelectorAll('details.box:not([open])')];
    for (const box of opened) box.open = true;
    for (const image of document.images) image.loading = 'eager';
  });
  addEventListener('afterprint', () => { for (const box of opened) box.open = false; });
}

// "#turn" opens the assembly, "#turn-3" the solid of the fourth object.
function openByAddress() {
  const [, number] = location.hash.match(/^#turn(?:-(\d+))?$/) || [null, null];
  if (!location.hash.startsWith('#turn')) return;
  const object = data.objects[number];
  const file = number === undefined ? data.assembly : object?.solid;
  if (file !== null && file !== undefined) Viewer.open(object ? headline(object) : `Assembly ${data.document}`, fileText(file));
}

showHead();
showTree();
showAssembly();
showBill();
showObjects();
showSteps();
showSummary();
new CallList();
showContents();
Viewer.prepare();
prepareForPaper();
openByAddress();
addEventListener('hashchange', openByAddress);
document.documentElement.dataset.ready = 'yes';
