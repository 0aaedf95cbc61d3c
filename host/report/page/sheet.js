// --- the sheet -------------------------------------------------------------------------------------------------------

const SVG = 'http://www.w3.org/2000/svg';

function makeSvg(name, attributes = {}, ...children) {
  const element = document.createElementNS(SVG, name);
  for (const [key, value] of Object.entries(attributes)) element.setAttribute(key, value);
  element.append(...children);
  return element;
}

/** Marks by shape, in millimetres on paper around the origin: a point, a crossing, a height, an arrow. */
const MARKS = [
  { path: 'M-.4 0a.4.4 0 1 0 .8 0a.4.4 0 1 0-.8 0z', pen: 0.15 },
  { path: 'M-.9 0a.9.9 0 1 0 1.8 0a.9.9 0 1 0-1.8 0z', pen: 0.3 },
  { path: 'M0 0L-1.3-2.2L1.3-2.2z', pen: 0.13 },
  { path: 'M0 0L-2.2.35L-2.2-.35z', pen: 0.13, filled: true },
];
const ANCHORS = ['start', 'middle', 'end'];

/** A colour of equal hue for a dark background: as light as it is dark on white. */
function onDark(color) {
  const [red, green, blue] = [1, 3, 5].map((at) => parseInt(color.slice(at, at + 2), 16) / 255);
  const sum = Math.max(red, green, blue) + Math.min(red, green, blue);
  const shift = 1 - sum;
  const channel = (value) => Math.round(Math.min(Math.max(value + shift, 0.12), 1) * 255);
  return `rgb(${channel(red)} ${channel(green)} ${channel(blue)})`;
}

/**
 * The rules for every kind of piece. Weights are millimetres on paper; --unit is what one of them is on the sheet.
 * A layer that is switched off is off in print as well.
 */
function styleRules(styles) {
  const rules = styles.map(({ name, line, width, dashes, text }) => {
    const lengths = dashes.map((length) => `calc(var(--unit) * ${length}px)`).join(' ');
    return `.${name} { --line: ${line}; --text-color: ${text}; --width: ${width}; ${lengths && `--dashes: ${lengths};`} }
      @media screen and (prefers-color-scheme: dark) { .${name} { --line: ${onDark(line)}; --text-color: ${onDark(text)}; } }
      body.without-${name} .sheet .${name} { display: none; }`;
  });
  const sheet = new CSSStyleSheet();
  sheet.replaceSync(rules.join('\n'));
  return sheet;
}

/** What a piece belongs to, for highlighting. */
function ownerOf(kind, form, target) {
  const owner = { class: kind };
  if (target >= 0) owner['data-target'] = target;
  if (form >= 0) owner['data-form'] = form;
  return owner;
}

/**
 * The drawing of a section as an SVG element, in millimetres on paper. Lines are enlarged with the sheet; marks and
 * texts have a size of their own (`arrange`), so that a closer look brings more of the design and not larger letters.
 */
class Sheet {
  constructor(drawing, styles, name) {
    this.styles = styles;
    [this.width, this.height] = drawing.size;
    this.lines = makeSvg('g', { class: 'lines' });
    this.labels = makeSvg('g', { class: 'labels' });
    this.placed = [];
    this.addLines(drawing.lines);
    this.upward(drawing.marks).forEach((mark) => this.addMark(mark));
    this.upward(drawing.texts).forEach((text) => this.addText(text));
    this.moved = makeSvg('g', {}, this.lines, this.labels);
    this.element = makeSvg('svg', { class: 'sheet', role: 'img', 'aria-label': name }, this.moved);
  }

  /** Pieces in the order in which they lie on each other. */
  upward(pieces) {
    return [...pieces].sort(([first], [second]) => this.styles[first].level - this.styles[second].level);
  }

  /** Lines of one owner are one path: thousands of hatches are as quick as one. Those of targets are easy to hit. */
  addLines(lines) {
    const paths = new Map();
    for (const [kind, form, target, ...places] of this.upward(lines)) {
      const key = `${kind} ${form} ${target}`;
      let d = paths.get(key)?.d ?? '';
      for (let i = 0; i < places.length; i += 2) d += `${i === 0 ? 'M' : 'L'}${places[i]} ${places[i + 1]}`;
      paths.set(key, { d, owner: ownerOf(this.styles[kind].name, form, target), isTarget: target >= 0 });
    }
    for (const { d, owner, isTarget } of paths.values()) {
      if (isTarget) this.lines.append(makeSvg('path', { ...owner, d, class: `${owner.class} grip` }));
      this.lines.append(makeSvg('path', { ...owner, d, class: `${owner.class} line` }));
    }
  }

  addMark([kind, form, target, shape, angle, x, y]) {
    const { path, pen, filled } = MARKS[shape];
    const owner = ownerOf(this.styles[kind].name, form, target);
    const shapeClass = filled ? 'mark filled' : 'mark';
    const mark = makeSvg('path', { ...owner, d: path, 'stroke-width': pen, class: `${owner.class} ${shapeClass}` });
    this.place(mark, x, y, -angle, 0);
  }

  addText([kind, form, target, anchor, angle, size, lift, content, x, y]) {
    const owner = ownerOf(this.styles[kind].name, form, target);
    const look = { class: `${owner.class} text`, 'font-size': size, 'text-anchor': ANCHORS[anchor] };
    const text = makeSvg('text', { ...owner, ...look });
    text.textContent = content;
    this.place(text, x, y, -angle, lift);
  }

  place(element, x, y, turn, lift) {
    this.placed.push({ element, x, y, tail: `${turn ? `rotate(${turn})` : ''}${lift ? `translate(0 ${-lift})` : ''}` });
    this.labels.append(element);
  }

  /** Puts a mark on the sheet that is not part of the drawing, such as the ring around a point. */
  put(element, x, y) {
    this.place(element, x, y, 0, 0);
    this.arrange(this.scale, this.unit);
  }

  /** Takes away what `put` has put there. */
  remove(element) {
    this.placed = this.placed.filter((placed) => placed.element !== element);
    element.remove();
  }

  /** @param scale of the places; @param unit of lines' weights, marks and texts, both per millimetre on paper */
  arrange(scale, unit) {
    this.scale = scale;
    this.unit = unit;
    this.element.style.setProperty('--unit', unit);
    this.lines.setAttribute('transform', `scale(${scale})`);
    for (const { element, x, y, tail } of this.placed) {
      element.setAttribute('transform', `translate(${x * scale} ${y * scale})scale(${unit})${tail}`);
    }
  }

  move({ x, y }) {
    this.moved.setAttribute('transform', `translate(${x} ${y})`);
  }

  /** The whole sheet for paper, at its scale where there is room. */
  asPage() {
    this.arrange(1, 1);
    this.element.style.width = `${this.width}mm`;
    this.element.style.height = `${this.height}mm`;
    this.element.setAttribute('viewBox', `0 0 ${this.width} ${this.height}`);
    return this.element;
  }
}
