// --- the list of sections --------------------------------------------------------------------------------------------

/** Height of a row in pixels; the style sheet knows it as --row. */
const ROW_HEIGHT = 40;
/** Rows beyond the visible ones that are kept, so that scrolling never shows a gap. */
const SPARE_ROWS = 6;

/** A list of any length: only the rows in sight are elements. */
class SectionList extends EventTarget {
  constructor(list, design) {
    super();
    this.list = list;
    this.runway = list.querySelector('.runway');
    this.runway.style.setProperty('--row', `${ROW_HEIGHT}px`);
    this.design = design;
    this.rows = new Map();
    this.found = [];
    this.chosen = -1;
    list.addEventListener('scroll', () => this.draw());
    list.addEventListener('click', (event) => {
      const row = event.target.closest('[role=option]');
      if (row) this.dispatchEvent(new CustomEvent('choose', { detail: Number(row.dataset.section) }));
    });
    new ResizeObserver(() => this.draw()).observe(list);
  }

  /** @param found indices of the sections to list */
  show(found) {
    this.found = found;
    this.runway.style.height = `${found.length * ROW_HEIGHT}px`;
    this.redraw();
  }

  /** Makes every row anew, for other words. */
  redraw() {
    for (const row of this.rows.values()) row.remove();
    this.rows.clear();
    this.draw();
  }

  choose(section) {
    this.chosen = section;
    const at = this.found.indexOf(section);
    if (at >= 0) this.bringIntoSight(at);
    this.redraw();
    if (at < 0) this.list.removeAttribute('aria-activedescendant');
  }

  bringIntoSight(at) {
    const top = at * ROW_HEIGHT;
    const { scrollTop, clientHeight } = this.list;
    if (top < scrollTop) this.list.scrollTop = top;
    if (top + ROW_HEIGHT > scrollTop + clientHeight) this.list.scrollTop = top + ROW_HEIGHT - clientHeight;
  }

  /** The section that stands that many rows from the chosen one, at most the first or the last. */
  neighbour(steps) {
    if (this.found.length === 0) return -1;
    const at = this.found.indexOf(this.chosen);
    if (at >= 0) return this.found[Math.min(Math.max(at + steps, 0), this.found.length - 1)];
    // The chosen one is not listed: the nearest that is.
    const next = this.found.findIndex((section) => section > this.chosen);
    if (steps > 0) return next < 0 ? this.found.at(-1) : this.found[next];
    return next < 0 ? this.found.at(-1) : this.found[Math.max(next - 1, 0)];
  }

  draw() {
    const first = Math.max(Math.floor(this.list.scrollTop / ROW_HEIGHT) - SPARE_ROWS, 0);
    const last = Math.min(
      Math.ceil((this.list.scrollTop + this.list.clientHeight) / ROW_HEIGHT) + SPARE_ROWS, this.found.length);
    for (const [at, row] of this.rows) {
      if (at >= first && at < last) continue;
      row.remove();
      this.rows.delete(at);
    }
    for (let at = first; at < last; ++at) {
      if (!this.rows.has(at)) this.rows.set(at, this.runway.appendChild(this.row(at)));
    }
  }

  row(at) {
    const section = this.found[at];
    const { station, more, errors, notes, title } = this.design.entry(section);
    const { words } = speech;
    const isChosen = section === this.chosen;
    const row = make('div', {
      role: 'option', class: 'row', title, id: `section-${section}`, 'data-section': section, 'aria-selected': String(isChosen),
      'aria-posinset': at + 1, 'aria-setsize': this.found.length,
    });
    row.style.top = `${at * ROW_HEIGHT}px`;
    row.append(make('span', { class: 'station' }, station), make('span', { class: 'name' }, more));
    if (errors > 0) row.append(make('span', { class: 'badge error' }, words.errors(errors)));
    if (notes > 0) row.append(make('span', { class: 'badge note' }, words.notes(notes)));
    if (isChosen) this.list.setAttribute('aria-activedescendant', row.id);
    return row;
  }
}
