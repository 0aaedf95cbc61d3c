// --- looking at the sheet --------------------------------------------------------------------------------------------

const MOST_ZOOM = 400;
const LEAST_ZOOM = 0.5;
const STEP = 1.4;
/** Up to here texts and marks grow with the drawing; then they stay, and make room. */
const LARGEST_LETTERS = 1.6;
/** How near to a point the pointer has to be, in pixels. */
const REACH = 18;

/** Shows a sheet with pan and zoom, and tells which point or control target is under the pointer. */
class SheetViewer extends EventTarget {
  constructor(stage, tip) {
    super();
    this.stage = stage;
    this.tip = tip;
    this.pointers = new Map();
    stage.addEventListener('wheel', (event) => this.onWheel(event), { passive: false });
    stage.addEventListener('pointerdown', (event) => this.onDown(event));
    stage.addEventListener('pointermove', (event) => this.onMove(event));
    for (const end of ['pointerup', 'pointercancel']) stage.addEventListener(end, (event) => this.onUp(event));
    stage.addEventListener('pointerleave', () => this.onLeave());
    stage.addEventListener('dblclick', (event) => this.zoomAt(event, STEP * STEP));
    new ResizeObserver(() => this.fit()).observe(stage);
  }

  /**
   * Shows another sheet. Where the former one was moved or enlarged and the frame is of the same kind, the same part
   * around the centre line is seen, so that people can follow a detail from section to section.
   * @param points where the sheet has points that can be hovered, in millimetres on paper
   * @param frame the kind of frame: its scale and exaggeration
   */
  show(sheet, points, frame) {
    const former = this.sheet && this.shift && frame === this.frame ? this.sheet.scale : null;
    this.sheet?.element.remove();
    this.sheet = sheet;
    this.showPoints(points);
    this.frame = frame;
    this.tell('point', null);
    if (!sheet) return;
    this.stage.prepend(sheet.element);
    if (former === null) return this.reset();
    this.zoom = former / this.whole;
    this.fit();
  }

  /** @param points that can be hovered from now on, in millimetres on paper */
  showPoints(points) {
    this.points = points;
  }

  tell(name, detail) {
    this.dispatchEvent(new CustomEvent(name, { detail }));
  }

  // --- zoom and pan ---

  reset() {
    this.zoom = 1;
    this.shift = null;
    this.fit();
  }

  /** Scale at which the whole sheet is seen. */
  get whole() {
    const { clientWidth, clientHeight } = this.stage;
    return Math.max(Math.min(clientWidth / this.sheet.width, clientHeight / this.sheet.height), 0.01);
  }

  /** The sheet in the middle, or where it was moved to. */
  fit() {
    if (!this.sheet) return;
    const scale = this.whole * this.zoom;
    const shift = this.shift ?? {
      x: this.stage.clientWidth / 2 - (this.sheet.left + this.sheet.width / 2) * scale,
      y: this.stage.clientHeight / 2 - (this.sheet.top + this.sheet.height / 2) * scale,
    };
    this.sheet.arrange(scale, this.whole * Math.min(this.zoom, LARGEST_LETTERS));
    this.move(shift);
    this.tell('zoom', this.zoom);
  }

  move(shift) {
    this.drawnAt = shift;
    this.sheet.move(shift);
  }

  /** Enlarges around a place of the stage, in pixels. */
  zoomAround({ x, y }, factor) {
    const zoom = Math.min(Math.max(this.zoom * factor, LEAST_ZOOM), MOST_ZOOM);
    const grown = zoom / this.zoom;
    this.shift = { x: x - (x - this.drawnAt.x) * grown, y: y - (y - this.drawnAt.y) * grown };
    this.zoom = zoom;
    this.fit();
  }

  zoomAt(event, factor) {
    if (this.sheet) this.zoomAround(this.onStage(event), factor);
  }

  zoomIn() {
    if (!this.sheet) return;
    if (!this.shift && !this.pointerAt) this.moveDesignToMiddle();
    this.zoomAround(this.pointerAt ?? this.middle, STEP);
  }
  zoomOut() {
    if (this.sheet) this.zoomAround(this.pointerAt ?? this.middle, 1 / STEP);
  }

  get middle() {
    return { x: this.stage.clientWidth / 2, y: this.stage.clientHeight / 2 };
  }

  /** The point of the design nearest to the middle goes there: the middle of a sheet is mostly empty. */
  moveDesignToMiddle() {
    const { middle } = this;
    const away = (point) => Math.hypot(this.xOf(point) - middle.x, this.yOf(point) - middle.y);
    const points = this.points.filter(({ form }) => form >= 0);
    if (points.length === 0) return;
    const nearest = points.reduce((best, point) => (away(point) < away(best) ? point : best));
    this.move({
      x: this.drawnAt.x + middle.x - this.xOf(nearest),
      y: this.drawnAt.y + middle.y - this.yOf(nearest),
    });
  }

  onStage(event) {
    const box = this.stage.getBoundingClientRect();
    return { x: event.clientX - box.left, y: event.clientY - box.top };
  }

  onWheel(event) {
    event.preventDefault();
    const lines = event.deltaMode === WheelEvent.DOM_DELTA_LINE ? event.deltaY * 33 : event.deltaY;
    this.zoomAt(event, Math.exp(-Math.max(-300, Math.min(300, lines)) * (event.ctrlKey ? 0.01 : 0.002)));
  }

  onDown(event) {
    if (!this.sheet || event.button !== 0) return;
    this.pointers.set(event.pointerId, this.onStage(event));
    this.travelled = this.pointers.size > 1 ? Infinity : 0;
  }

  onMove(event) {
    if (!this.sheet) return;
    if (!this.pointers.has(event.pointerId)) return this.hover(event);
    const before = this.middleAndSpan();
    const from = this.pointers.get(event.pointerId);
    const to = this.onStage(event);
    this.pointers.set(event.pointerId, to);
    this.travelled += Math.hypot(to.x - from.x, to.y - from.y);
    if (this.travelled < 4) return;
    this.stage.setPointerCapture(event.pointerId);
    this.tell('point', null);
    const after = this.middleAndSpan();
    this.shift = {
      x: this.drawnAt.x + after.middle.x - before.middle.x,
      y: this.drawnAt.y + after.middle.y - before.middle.y,
    };
    this.move(this.shift);
    if (before.span > 0 && after.span > 0) this.zoomAround(after.middle, after.span / before.span);
  }

  onLeave() {
    this.pointerAt = null;
    this.tell('hover-target', []);
    this.tell('point', null);
  }

  onUp(event) {
    const wasDown = this.pointers.delete(event.pointerId);
    if (!wasDown || event.type === 'pointercancel' || this.travelled >= 4) return;
    const target = event.target.closest?.('[data-target]');
    if (target) this.tell('target', targetsOf(target));
    this.hover(event);
  }

  /** Middle of the fingers, and how far two of them are apart. */
  middleAndSpan() {
    const [first, second = first] = this.pointers.values();
    return {
      middle: { x: (first.x + second.x) / 2, y: (first.y + second.y) / 2 },
      span: Math.hypot(first.x - second.x, first.y - second.y),
    };
  }

  // --- points ---

  hover(event) {
    this.pointerAt = this.onStage(event);
    const { x, y } = this.pointerAt;
    const target = event.target.closest?.('[data-target]');
    this.tell('hover-target', targetsOf(target));
    let nearest = null;
    let least = REACH;
    for (const point of this.points) {
      const distance = Math.hypot(this.xOf(point) - x, this.yOf(point) - y);
      if (distance < least) [nearest, least] = [point, distance];
    }
    this.tell('point', nearest);
  }

  xOf(point) {
    return point.x * this.sheet.scale + this.drawnAt.x;
  }
  yOf(point) {
    return point.y * this.sheet.scale + this.drawnAt.y;
  }

  /** Rings points and, with a content for the first, tells of it beside it. */
  mark(points, content) {
    this.rings?.forEach((ring) => this.sheet?.remove(ring));
    this.rings = [];
    this.tip.hidden = true;
    if (!this.sheet) return;
    for (const point of points) {
      const ring = makeSvg('circle', { class: 'ring', r: 1.8 });
      this.sheet.put(ring, point.x, point.y);
      this.rings.push(ring);
    }
    if (!content || points.length === 0) return;
    this.tip.replaceChildren(content);
    this.tip.hidden = false;
    this.placeTip(this.xOf(points[0]), this.yOf(points[0]));
  }

  /** Beside the point, on the side where there is room. */
  placeTip(x, y) {
    const { offsetWidth: width, offsetHeight: height } = this.tip;
    const left = x + 16 + width <= this.stage.clientWidth ? x + 16 : x - 16 - width;
    const top = Math.min(Math.max(y - height / 2, 4), this.stage.clientHeight - height - 4);
    this.tip.style.left = `${Math.max(left, 4)}px`;
    this.tip.style.top = `${Math.max(top, 4)}px`;
  }
}
