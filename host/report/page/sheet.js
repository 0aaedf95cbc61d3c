// --- the sheet -------------------------------------------------------------------------------------------------------

const SVG = 'http://www.w3.org/2000/svg';

function makeSvg(name, attributes = {}, ...children) {
  const element = document.createElementNS(SVG, name);
  for (const [key, value] of Object.entries(attributes)) element.setAttribute(key, value);
  element.append(...children);
  return element;
}

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
function styleRules({ kinds }) {
  const rules = kinds.map(({ name, line, width, dashes, text }) => {
    const lengths = dashes.map((length) => `calc(var(--unit) * ${length}px)`).join(' ');
    return `.${name} { --line: ${line}; --text-color: ${text}; --width: ${width}; ${lengths && `--dashes: ${lengths};`} }
      @media screen and (prefers-color-scheme: dark) { .${name} { --line: ${onDark(line)}; --text-color: ${onDark(text)}; } }
      body.without-${name} .sheet .${name} { display: none; }`;
  });
  const sheet = new CSSStyleSheet();
  sheet.replaceSync(rules.join('\n'));
  return sheet;
}

function markOf({ path, width, filled }, attributes) {
  const look = filled ? 'mark filled' : 'mark';
  return makeSvg('path', { ...attributes, d: path, 'stroke-width': width, class: `${attributes.class} ${look}` });
}

/** Kinds that are told by a mark or by letters rather than by a line. */
const SAMPLES = {
  crossing: { shape: 'cross' }, code: { shape: 'point' }, grade: { letters: '1:1.5' }, title: { letters: 'A' },
};

/** What a kind looks like on the sheet, for a legend: its line with its weight and dashes, its mark, or its letters. */
function legendOf({ name }, styles) {
  const { shape, letters } = SAMPLES[name] ?? {};
  const legend = makeSvg('svg', { class: 'legend', viewBox: '-6.5 -2 13 4', 'aria-hidden': 'true' });
  if (letters) {
    const text = makeSvg('text', { class: `${name} text`, 'font-size': 3, 'text-anchor': 'middle', y: 1.1 });
    text.textContent = letters;
    legend.append(text);
  } else if (shape) {
    legend.append(markOf(styles.marks.find((mark) => mark.name === shape), { class: name }));
  } else {
    legend.append(makeSvg('path', { class: `${name} line`, d: 'M-6.5 0H6.5' }));
  }
  return legend;
}

/** The control targets that a piece of the drawing shows. */
function targetsOf(piece) {
  return piece?.dataset.target.split(' ').map(Number) ?? [];
}

/**
 * The drawing of a section as an SVG element, in millimetres on paper from the centre line. Lines are enlarged with the
 * sheet; marks, texts and their leaders have a size of their own around their places (`arrange`), and so have the gaps
 * of extension lines, so that a closer look brings more of the design and not larger letters.
 */
class Sheet {
  constructor(drawing, styles, name) {
    this.styles = styles;
    [this.left, this.top, this.width, this.height] = drawing.box;
    this.lines = makeSvg('g', { class: 'lines' });
    this.extensionLines = makeSvg('g', { class: 'extensions' });
    this.labels = makeSvg('g', { class: 'labels' });
    this.placed = [];
    this.extensions = [];
    this.measured = drawing.measured;
    this.addLines(drawing.lines);
    drawing.extensions.forEach((extension) => this.addExtension(extension));
    drawing.leaders.forEach((leader) => this.addLeader(leader));
    this.upward(drawing.marks).forEach((mark) => this.addMark(mark));
    this.upward(drawing.texts).forEach((text) => this.addText(text));
    this.moved = makeSvg('g', {}, this.lines, this.extensionLines, this.labels);
    this.element = makeSvg('svg', { class: 'sheet', role: 'img', 'aria-label': name }, this.moved);
  }

  /** What a piece belongs to, for highlighting: a form, and the control targets that measure the same there. */
  ownerOf(kind, form, target) {
    const owner = { class: kind };
    if (target >= 0) owner['data-target'] = this.measured[target].join(' ');
    if (form >= 0) owner['data-form'] = form;
    return owner;
  }

  /** Pieces in the order in which they lie on each other. */
  upward(pieces) {
    return [...pieces].sort(([first], [second]) => this.styles.kinds[first].level - this.styles.kinds[second].level);
  }

  /** Lines of one owner are one path: thousands of hatches are as quick as one. Those of targets are easy to hit. */
  addLines(lines) {
    const paths = new Map();
    for (const [kind, form, target, ...places] of this.upward(lines)) {
      const key = `${kind} ${form} ${target}`;
      let d = paths.get(key)?.d ?? '';
      for (let i = 0; i < places.length; i += 2) d += `${i === 0 ? 'M' : 'L'}${places[i]} ${places[i + 1]}`;
      paths.set(key, { d, owner: this.ownerOf(this.styles.kinds[kind].name, form, target), isTarget: target >= 0 });
    }
    for (const { d, owner, isTarget } of paths.values()) {
      if (isTarget) this.lines.append(makeSvg('path', { ...owner, d, class: `${owner.class} grip` }));
      this.lines.append(makeSvg('path', { ...owner, d, class: `${owner.class} line` }));
    }
  }

  addMark([kind, form, target, shape, angle, x, y]) {
    const owner = this.ownerOf(this.styles.kinds[kind].name, form, target);
    this.place(markOf(this.styles.marks[shape], owner), x, y, -angle);
  }

  /** A line from beside a measured place to its dimension line. */
  addExtension([kind, form, target, x, y, besideX, besideY, endX, endY]) {
    const owner = this.ownerOf(this.styles.kinds[kind].name, form, target);
    const elements = ['grip', 'line'].map((look) => makeSvg('path', { ...owner, class: `${owner.class} ${look}` }));
    this.extensionLines.append(...elements);
    this.extensions.push({ elements, x, y, besideX, besideY, endX, endY });
  }

  addLeader([kind, form, target, x, y, ...places]) {
    const owner = this.ownerOf(this.styles.kinds[kind].name, form, target);
    this.place(makeSvg('path', { ...owner, d: `M${places.join(' ')}`, class: `${owner.class} line` }), x, y);
  }

  addText([kind, form, target, anchor, angle, size, along, lift, content, x, y]) {
    const owner = this.ownerOf(this.styles.kinds[kind].name, form, target);
    const look = { class: `${owner.class} text`, 'font-size': size, 'text-anchor': anchor };
    const text = makeSvg('text', { ...owner, ...look });
    text.textContent = content;
    this.place(text, x, y, -angle, along, -lift);
  }

  /** Sets an element at a place; it is turned there, and stands beside it as one reads. */
  place(element, x, y, turn = 0, right = 0, down = 0) {
    const turned = turn ? `rotate(${turn})` : '';
    const moved = right || down ? `translate(${right} ${down})` : '';
    this.placed.push({ element, x, y, tail: turned + moved });
    this.labels.append(element);
  }

  /** Puts a mark on the sheet that is not part of the drawing, such as the ring around a point. */
  put(element, x, y) {
    this.place(element, x, y);
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
    for (const { elements, x, y, besideX, besideY, endX, endY } of this.extensions) {
      const beside = `${x * scale + besideX * unit} ${y * scale + besideY * unit}`;
      for (const element of elements) element.setAttribute('d', `M${beside}L${(x + endX) * scale} ${(y + endY) * scale}`);
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
    this.element.setAttribute('viewBox', `${this.left} ${this.top} ${this.width} ${this.height}`);
    return this.element;
  }
}
