// --- what is known of a section --------------------------------------------------------------------------------------

/** A document may have any number of findings; the page lists this many. */
const MOST_FINDINGS = 500;

/** The same for the points and the control targets of a section: thousands of rows would take seconds to make. */
const MOST_ROWS = 1000;

/** Columns that hold metres. */
const NUMBERS = new Set(['value', 'offset', 'height']);

function head(...names) {
  return make('thead', {}, make('tr', {}, ...names.map((name) => make('th', { scope: 'col', class: NUMBERS.has(name) && 'number' }, speech.words[name]))));
}

/** Up to so many characters a text stays on one line, whatever room long ones beside it would take. */
const LONGEST_UNBROKEN = 16;

function textCell(text) {
  return make('td', { class: text.length <= LONGEST_UNBROKEN && 'short' }, text);
}

function cells(row, ...texts) {
  for (const text of texts) row.append(text instanceof Node ? text : textCell(text));
  return row;
}

function number(value) {
  return make('td', { class: 'number' }, metres(value));
}

/** A row that the keyboard reaches like a button. The one that the drawing shows is the current one. */
function choosable(attributes) {
  return make('tr', { ...attributes, tabindex: 0, class: 'choosable', 'aria-current': 'false' });
}

/** The findings, worst first; a text by text, never as markup. */
function findingsTable(findings, viewNotes = []) {
  const { words } = speech;
  const body = make('tbody');
  const errorsFirst = [...findings].sort(([first], [second]) => first - second);
  for (const [severity, kind, path, reason, form, point] of errorsFirst.slice(0, MOST_FINDINGS)) {
    const row = form >= 0 && point >= 0 ? choosable({ 'data-form': form, 'data-point': point }) : make('tr');
    const badge = make('span', { class: `badge ${severity === 0 ? 'error' : 'note'}` }, severity === 0 ? words.error : words.note);
    body.append(cells(row, make('td', {}, badge), words.kinds[kind] ?? kind, path, reason));
  }
  for (const note of viewNotes) {
    body.append(cells(make('tr'), make('td', {}, make('span', { class: 'badge view' }, words.view)), '', '', note));
  }
  const table = make('table', {}, head('severity', 'kind', 'where', 'reason'), body);
  return withRest(table, errorsFirst.length - MOST_FINDINGS);
}

/** A table, and how many rows it leaves out. */
function withRest(table, left) {
  return left > 0 ? make('div', {}, table, make('p', { class: 'quiet rest' }, speech.words.more(left))) : table;
}

/**
 * A table of rows that can be chosen, without the columns that say nothing.
 * @param rowOf gives of an item the attributes of its row, and a text or cell for every column
 */
function choosableTable(columns, items, rowOf) {
  const rows = items.slice(0, MOST_ROWS).map(rowOf);
  const told = columns.map((_, at) => rows.some(([, texts]) => texts[at] !== ''));
  const isTold = (_, at) => told[at];
  const body = make('tbody');
  for (const [attributes, texts] of rows) body.append(cells(choosable(attributes), ...texts.filter(isTold)));
  return withRest(make('table', {}, head(...columns.filter(isTold)), body), items.length - MOST_ROWS);
}

function itemOf({ item }) {
  return speech.words.items[item] ?? item;
}

function workTypeOf({ workType }) {
  return speech.words.workTypes[workType] ?? workType;
}

/** A point as its target names it, and where it stands when it is not here. */
function pointName([form, , name, , station, isBehindChange]) {
  const { words } = speech;
  if (station) return `${name} (${words.elsewhere(station, isBehindChange)})`;
  return form < 0 ? `${name} (${words.missing})` : name;
}

/** A cell with a line for each of several points. */
function linesCell(texts, attributes = {}) {
  return make('td', attributes, ...texts.map((text) => make('div', { class: 'one-line', title: text }, text)));
}

/** The points of a target and its design value; of points that have values of their own, each with its value. */
function pointsAndValue({ points, value }) {
  if (value !== null || !points.some(([, , , own]) => own !== null)) {
    return [points.map(pointName).join(' – '), number(value)];
  }
  return [linesCell(points.map(pointName)), linesCell(points.map(([, , , own]) => metres(own)), { class: 'number' })];
}

function targetsTable(section) {
  const rowOf = (target, at) => [{ 'data-target': at }, [itemOf(target), ...pointsAndValue(target), target.form,
    workTypeOf(target), target.scope, target.regulation]];
  return choosableTable(['item', 'targetPoints', 'value', 'form', 'workType', 'scope', 'regulation'], section.targets, rowOf);
}

/**
 * The control targets that no cross section shows, and how many they are: of each what it measures, its type and its
 * alignment, which points it names, and why it is nowhere.
 */
function targetsWithoutSection(targets, sets) {
  const { words } = speech;
  const body = make('tbody');
  for (const target of targets.slice(0, MOST_FINDINGS)) {
    const what = [itemOf(target), workTypeOf(target), target.scope, target.regulation, sets.length > 1 ? sets[target.set] : ''];
    const where = target.points.map(pointName).join(' – ');
    const why = target.points.length > 0 ? words.stationsWithoutSection : words.targetWithoutPoints;
    body.append(cells(make('tr'), what.filter(Boolean).join(' · '), where, why));
  }
  const heading = make('p', { class: 'heading' }, words.targetsWithoutSection(targets.length));
  const table = make('table', {}, head('item', 'targetPoints', 'reason'), body);
  return make('div', { class: 'left-over' }, heading, withRest(table, targets.length - MOST_FINDINGS));
}

/** What there is to say of a point besides its place. */
function remarksOn(point) {
  const { words } = speech;
  return [point.isCrossing ? words.crossing : '', point.exists === 0 ? words.absent : ''].filter(Boolean).join(', ');
}

function codeOf(point) {
  return point?.code || speech.words.withoutCode;
}

function fromOf(section, point) {
  return point.from < 0 ? '–' : codeOf(pointOf(section, point.form, point.from));
}

function sideAndPart(point) {
  const { words } = speech;
  return [words.sides[point.side] ?? point.side, words.parts[point.part]].filter(Boolean).join(' · ');
}

function pointsTable(section) {
  const points = pointsOf(section).filter(({ form }) => form >= 0);
  const rowOf = (point) => [
    { 'data-form': point.form, 'data-point': point.at },
    [section.forms[point.form].name, codeOf(point), number(point.offset), number(point.height), fromOf(section, point),
      point.input, point.grade, sideAndPart(point), remarksOn(point)],
  ];
  return choosableTable(['form', 'code', 'offset', 'height', 'from', 'input', 'grade', 'part', 'remarks'], points, rowOf);
}

/** What the pointer is told about a point; others at the same place are named too. */
function pointCard(section, point, others) {
  const { words } = speech;
  const rows = [['offset', `${metres(point.offset)} m`], ['height', `${metres(point.height)} m`]];
  if (point.form >= 0) {
    rows.push(['from', fromOf(section, point)], ['input', point.input], ['grade', point.grade], ['part', sideAndPart(point)],
      ['remarks', remarksOn(point)]);
  }
  const list = make('dl');
  for (const [name, text] of rows) {
    if (text) list.append(make('dt', {}, words[name]), make('dd', { class: `of-${name}` }, text));
  }
  const owner = point.form >= 0 ? section.forms[point.form].name : section.grounds[point.ground].name;
  const title = make('p', { class: 'card-title' },
    make('strong', { class: 'of-code' }, point.form >= 0 ? codeOf(point) : words.ground), ` ${owner}`);
  const card = make('div', {}, title, list);
  if (others.length > 0) {
    const names = others.map((other) => `${section.forms[other.form].name} ${codeOf(other)}`);
    card.append(make('p', { class: 'quiet' }, `${words.alsoHere}: ${names.join(', ')}`));
  }
  return card;
}
