// --- the design ------------------------------------------------------------------------------------------------------

/** An element with attributes and children; texts become text, whatever they hold. */
function make(name, attributes = {}, ...children) {
  const element = document.createElement(name);
  for (const [key, value] of Object.entries(attributes)) {
    if (value === null || value === undefined || value === false) continue;
    element.setAttribute(key, value === true ? '' : value);
  }
  element.append(...children);
  return element;
}

/** Texts compared without regard to case and to full or half width. */
function folded(text) {
  return text.normalize('NFKC').toLowerCase();
}

function inflated(base64) {
  const bytes = Uint8Array.from(atob(base64), (character) => character.charCodeAt(0));
  const stream = new Blob([bytes]).stream().pipeThrough(new DecompressionStream('deflate'));
  return new Response(stream).json();
}

/** Finds the cross sections that a search means. */
class Search {
  constructor(index) {
    this.index = index;
    this.texts = index.sections.map(([set, station, name, metresAlong]) =>
      folded([station, name, index.sets[set], metresAlong === null ? '' : metresAlong.toFixed(4)].join('\n')));
    this.codes = index.codes.map((codes) => new Set(codes.map(folded)));
  }

  /** Indices of the sections whose station, name or alignment holds the text, or that have a point of that code. */
  find(text, onlyFindings) {
    const wanted = folded(text.trim());
    const withCode = this.codes.map((codes) => codes.has(wanted));
    const found = [];
    this.index.sections.forEach(([, , , , errors, notes, codes], at) => {
      if (onlyFindings && errors + notes === 0) return;
      if (wanted === '' || this.texts[at].includes(wanted) || withCode[codes]) found.push(at);
    });
    return found;
  }
}

/**
 * How each kind of piece is drawn, by its number; `level` tells what lies above what. And how each shape of marks is, by
 * its number as well.
 */
function stylesOf({ kinds, marks }) {
  const byNumber = [];
  kinds.forEach((style, level) => {
    byNumber[style.kind] = { ...style, level };
  });
  return { kinds: byNumber, marks: marks.map((mark) => ({ ...mark, path: pathOf(mark) })) };
}

/** A mark as a path around its place, in millimetres on paper: a circle, or a triangle that points at it from the left. */
function pathOf({ radius, length, halfBase }) {
  if (radius > 0) return `M${-radius} 0a${radius} ${radius} 0 1 0 ${2 * radius} 0a${radius} ${radius} 0 1 0 ${-2 * radius} 0z`;
  return `M0 0L${-length} ${halfBase}L${-length} ${-halfBase}z`;
}

/** The design in the page: an index of its cross sections, and packs of them that are opened when one is needed. */
class Design {
  static mostOpenPacks = 24;

  constructor() {
    this.index = JSON.parse(document.getElementById('index').textContent);
    this.packs = document.getElementsByClassName('pack');
    this.open = new Map();
    this.styles = stylesOf(this.index);
    this.search = new Search(this.index);
    this.nameSections();
  }

  get length() {
    return this.index.sections.length;
  }

  /** What the list tells of a section: its station, and in `more` what else it is called. */
  entry(at) {
    const [set, station, name, , errors, notes, , isBehindChange] = this.index.sections[at];
    const alignment = this.index.sets.length > 1 ? this.index.sets[set] : '';
    const called = (behind) => [alignment, name, isBehindChange ? behind : ''].filter(Boolean).join(' · ');
    const title = [station, called(speech.words.behindChange)].filter(Boolean).join('  ');
    return { station, more: called(speech.words.behindShort), errors, notes, title };
  }

  /** Every section's name in the page's address, which outlasts a new report of the design. */
  nameSections() {
    this.addresses = [];
    this.atAddress = new Map();
    const twins = new Map();  // how many have each station
    this.index.sections.forEach(([set, station], at) => {
      const plain = this.index.sets.length > 1 ? `${set + 1}/${station}` : station;
      let address = plain;
      let twin = twins.get(plain) ?? 1;
      while (this.atAddress.has(address)) address = `${plain}~${++twin}`;
      twins.set(plain, twin);
      this.addresses.push(address);
      this.atAddress.set(address, at);
    });
  }

  /** Opens a pack, or finds it among those opened last. */
  pack(at) {
    const known = this.open.get(at);
    this.open.delete(at);
    const pack = known ?? inflated(this.packs[at].textContent);
    this.open.set(at, pack);
    if (this.open.size > Design.mostOpenPacks) this.open.delete(this.open.keys().next().value);
    return pack;
  }

  async section(at) {
    const { sectionsInPack } = this.index;
    const pack = await this.pack(Math.floor(at / sectionsInPack));
    return pack[at % sectionsInPack];
  }

  /** The last pack: what is wrong with the document as a whole, and the control targets that no section shows. */
  wholeDocument() {
    return this.pack(this.packs.length - 1);
  }

  /** How much of that there is. */
  get wholeDocumentCount() {
    return this.index.documentFindings + this.index.targetsWithoutSection;
  }
}

/** What could not be shown of a section, in the language in use. */
function notesOf(section) {
  return section.notes[speech.language];
}

/** The drawing with the words of the language in use. */
function drawingOf({ drawing, japanese, words }) {
  const differences = speech.language === 'ja' ? japanese : {};
  return { ...drawing, ...differences, texts: [...drawing.texts, ...words[speech.language]] };
}

/** A point of a form by the columns of its row; null where it has no place. */
function pointOf(section, form, at) {
  const row = section.forms[form]?.points[at];
  if (!row) return null;
  const [code, from, part, side, input, grade, exists, isCrossing, offset, height, x, y, kinds] = row;
  return { form, at, code, from, part, side, input, grade, exists, isCrossing, offset, height, x, y, kinds };
}

/** Whether two of them are the same point; places tell points of the ground apart. */
function isSamePoint(one, other) {
  return one.form === other.form && one.at === other.at && one.x === other.x && one.y === other.y;
}

/** Every point that has a place, form after form, then those of the existing ground; `kinds` of the lines that end there. */
function pointsOf(section) {
  const points = [];
  section.forms.forEach((form, f) =>
    form.points.forEach((row, p) => row && points.push(pointOf(section, f, p))));
  section.grounds.forEach((ground, g) => ground.points.forEach(([offset, height, x, y]) =>
    points.push({ form: -1, at: -1, ground: g, offset, height, x, y, kinds: [ground.kind] })));
  return points;
}
