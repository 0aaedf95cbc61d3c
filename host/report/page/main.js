// --- the page --------------------------------------------------------------------------------------------------------

const byId = (id) => document.getElementById(id);
const TABS = ['findings', 'targets', 'points'];

const SCROLLING_KEYS = new Set(['ArrowUp', 'ArrowDown', 'PageUp', 'PageDown', 'Home', 'End']);

/** Whether a key scrolls what has the focus: a table that is longer than its place. */
function scrolls({ key, target }) {
  const place = target.closest('.panel, .document');
  return SCROLLING_KEYS.has(key) && place !== null && place.scrollHeight > place.clientHeight;
}

class Page {
  constructor() {
    this.design = new Design();
    speech.begin(this.design.index.language);
    this.list = new SectionList(byId('list'), this.design);
    this.viewer = new SheetViewer(byId('stage'), byId('tip'));
    this.printing = new Printing(this.design, byId('sheets'), byId('print-progress'));
    this.chosen = -1;
    this.target = -1;
    this.tab = this.design.index.errors > 0 ? 'findings' : 'targets';
    document.adoptedStyleSheets = [styleRules(this.design.styles)];
    this.listen();
    this.speak();
    this.filter();
    this.openAddress();
  }

  // --- words ---

  speak() {
    const { words } = speech;
    const { index } = this.design;
    label(document);
    byId('language').value = speech.language;
    document.title = index.file;
    byId('file').textContent = index.file;
    const edition = `${words.edition} ${index.edition}${index.assumed ? ` (${words.assumed})` : ''}`;
    byId('facts').textContent = [index.workType, edition, words.sectionCount(this.design.length),
      findingsText(index.errors, index.notes)].filter(Boolean).join(' · ');
    byId('facts').title = byId('facts').textContent;
    const { wholeDocumentCount } = this.design;
    byId('document').hidden = wholeDocumentCount === 0;
    byId('document-summary').textContent = `${words.document} (${wholeDocumentCount})`;
    byId('document').open = false;
    this.showLayers();
    this.list.redraw();
    this.showCount();
    this.show();
  }

  showLayers() {
    const legend = byId('layers').querySelector('legend');
    byId('layers').replaceChildren(legend, ...this.design.styles.kinds.map((style) => {
      const box = make('input', { type: 'checkbox', 'data-layer': style.name });
      box.checked = !document.body.classList.contains(`without-${style.name}`);
      return make('label', { class: 'check' }, box, legendOf(style, this.design.styles), speech.words.layerNames[style.name]);
    }));
  }

  // --- the list ---

  filter() {
    this.found = this.design.search.find(byId('search').value, byId('only-findings').checked);
    this.list.show(this.found);
    this.showCount();
  }

  showCount() {
    if (!this.found) return;
    const { words } = speech;
    const count = this.found.length;
    byId('count').textContent = words.listed(count, this.design.length);
    byId('print-listed').textContent = words.printListed(Math.min(count, MOST_PAGES));
    byId('print-limit').hidden = count <= MOST_PAGES;
    byId('print-limit').textContent = words.printLimit(MOST_PAGES, count);
  }

  openAddress() {
    let address = '';
    try {
      address = decodeURIComponent(location.hash.slice(1));
    } catch {
      // Not one of this page's addresses.
    }
    this.choose(this.design.atAddress.get(address) ?? (this.design.length > 0 ? 0 : -1));
  }

  step(steps) {
    const section = this.list.neighbour(steps);
    if (section >= 0) this.choose(section);
  }

  /** Shows a section. Of several chosen quickly, the last one counts. */
  async choose(section) {
    if (section === this.chosen) return;
    this.chosen = section;
    this.target = -1;
    this.list.choose(section);
    if (section >= 0) {
      const address = `#${encodeURIComponent(this.design.addresses[section])}`;
      if (location.hash !== address) history.replaceState(null, '', address);
    }
    try {
      const content = section < 0 ? null : await this.design.section(section);
      if (this.chosen !== section) return;
      this.section = content;
      this.show();
      this.announce();
    } catch (error) {
      this.section = null;
      this.show();
      byId('title').textContent = speech.words.broken;
      console.error(error);
    }
  }

  announce() {
    if (this.chosen < 0) return;
    const { title, errors, notes } = this.design.entry(this.chosen);
    const place = speech.words.position(this.chosen + 1, this.design.length);
    byId('live').textContent = [title, place, findingsText(errors, notes)].join(', ');
  }

  // --- the chosen section ---

  show() {
    const { words } = speech;
    byId('empty').hidden = this.design.length > 0;
    if (!this.section) {
      this.viewer.show(null, []);
      byId('title').textContent = '';
      byId('height').textContent = '';
      return this.clearPanels();
    }
    const { title } = this.design.entry(this.chosen);
    const { isControlSection } = this.section;
    byId('title').textContent = title;
    byId('title').title = title;
    byId('height').textContent = [heightText(this.section), isControlSection ? words.controlSection : ''].filter(Boolean).join(' · ');
    this.points = pointsOf(this.section);
    this.shown = this.shownPoints();
    const drawing = drawingOf(this.section);
    const frame = `1:${drawing.scale}, ${drawing.exaggeration}`;
    this.viewer.show(new Sheet(drawing, this.design.styles, title), this.shown, frame);
    this.showTables();
    this.highlightTarget(this.target);
  }

  showTables() {
    const { words } = speech;
    const { findings, targets } = this.section;
    const notes = notesOf(this.section);
    const ofForms = this.points.filter(({ form }) => form >= 0).length;
    const counts = { findings: findings.length + notes.length, targets: targets.length, points: ofForms };
    for (const tab of TABS) byId(`tab-${tab}`).textContent = `${words[tab]} (${counts[tab]})`;
    this.tables = {
      findings: () => (counts.findings > 0 ? findingsTable(findings, notes) : words.nothingFound),
      targets: () => (counts.targets > 0 ? targetsTable(this.section) : words.noTargets),
      points: () => (counts.points > 0 ? pointsTable(this.section) : words.noPoints),
    };
    this.clearPanels();
    this.openTab(this.tab);
  }

  /** The focus stays where it was: a panel keeps it when its rows are gone. */
  clearPanels() {
    const panel = document.activeElement?.closest('.panel');
    for (const tab of TABS) byId(`panel-${tab}`).replaceChildren();
    panel?.focus({ preventScroll: true });
  }

  /** A table is made when it is looked at: one of thousands of points takes its time. */
  fillPanel() {
    const panel = byId(`panel-${this.tab}`);
    if (!this.section || panel.hasChildNodes()) return;
    const content = this.tables[this.tab]();
    panel.append(content instanceof Node ? content : make('p', { class: 'quiet' }, content));
    if (this.tab === 'targets') this.lightTarget(this.target);
  }

  openTab(name) {
    this.tab = name;
    for (const tab of TABS) {
      byId(`tab-${tab}`).ariaSelected = String(tab === name);
      byId(`tab-${tab}`).tabIndex = tab === name ? 0 : -1;
      byId(`panel-${tab}`).hidden = tab !== name;
    }
    this.fillPanel();
  }

  // --- points and targets ---

  /** The points that are seen: what is switched off does not answer the pointer. */
  shownPoints() {
    const isShown = (kind) => !document.body.classList.contains(`without-${this.design.styles.kinds[kind].name}`);
    return this.points.filter(({ kinds }) => kinds.some(isShown));
  }

  /** The other points that are seen at the place of a point. */
  samePlace(point) {
    return this.shown.filter((other) => other.form >= 0 && !isSamePoint(other, point) && other.offset === point.offset &&
      other.height === point.height);
  }

  /** Rings a point and tells of it; the points of the chosen target without one. */
  ring(point) {
    this.ringed = point;
    this.viewer.mark(point ? [point] : this.pointsOfTarget(this.target),
      point && pointCard(this.section, point, this.samePlace(point)));
  }

  /** @param point the point under the pointer, or none */
  hoverPoint(point) {
    this.ring(point);
    this.lightRows('panel-points', (row) => point && Number(row.dataset.form) === point.form && Number(row.dataset.point) === point.at);
  }

  pointsOfTarget(target) {
    return (this.section?.targets[target]?.points ?? []).map(([form, point]) => pointOf(this.section, form, point)).filter(Boolean);
  }

  /** Shows a target on the drawing and in its table. */
  highlightTarget(target) {
    for (const piece of this.viewer.sheet?.element.querySelectorAll('[data-target]') ?? []) {
      piece.classList.toggle('lit', targetsOf(piece).includes(target));
    }
    this.ringed = null;
    this.viewer.mark(this.pointsOfTarget(target));
    this.lightTarget(target);
  }

  lightTarget(...targets) {
    this.lightRows('panel-targets', (row) => targets.includes(Number(row.dataset.target)));
  }

  /** @param isLit tells of a row whether it is the one; brings it into sight */
  lightRows(panel, isLit) {
    for (const row of byId(panel).querySelectorAll('tr.choosable')) {
      const lit = Boolean(isLit(row));
      if (lit === (row.ariaCurrent === 'true')) continue;
      row.ariaCurrent = String(lit);
      if (lit) row.scrollIntoView({ block: 'nearest' });
    }
  }

  /** @param targets that one dimension shows: another click on it goes to the next */
  chooseTarget(targets) {
    this.target = targets[(targets.indexOf(this.target) + 1) % targets.length];
    this.openTab('targets');
    this.highlightTarget(this.target);
  }

  /** What a row of a table is about: it is shown on the drawing while the pointer or the keyboard is there. */
  enterRow(row) {
    const { target, form, point } = row.dataset;
    if (target !== undefined) return this.highlightTarget(Number(target));
    const shown = pointOf(this.section, Number(form), Number(point));
    if (shown) this.ring(shown);
  }

  chooseRow(row) {
    if (row.dataset.target === undefined) return this.enterRow(row);
    const target = Number(row.dataset.target);
    this.target = target === this.target ? -1 : target;
    this.highlightTarget(this.target);
  }

  // --- what people do ---

  listen() {
    byId('search').addEventListener('input', () => this.filter());
    byId('search').addEventListener('keydown', (event) => this.onSearchKey(event));
    byId('only-findings').addEventListener('change', () => this.filter());
    byId('language').addEventListener('change', () => {
      speech.language = byId('language').value;
      this.speak();
      this.announce();
    });
    this.list.addEventListener('choose', ({ detail }) => this.choose(detail));
    window.addEventListener('hashchange', () => this.openAddress());
    document.addEventListener('keydown', (event) => this.onKey(event));
    byId('former').addEventListener('click', () => this.step(-1));
    byId('next').addEventListener('click', () => this.step(1));
    byId('zoom-in').addEventListener('click', () => this.viewer.zoomIn());
    byId('zoom-out').addEventListener('click', () => this.viewer.zoomOut());
    byId('reset').addEventListener('click', () => this.viewer.reset());
    byId('layers').addEventListener('change', ({ target }) => this.switchLayer(target.dataset.layer, target.checked));
    document.addEventListener('pointerdown', ({ target }) => {
      if (!byId('layers-menu').contains(target)) byId('layers-menu').open = false;
    });
    byId('layers-menu').addEventListener('focusout', ({ relatedTarget }) => {
      // Nothing has the focus next where the window loses it, or a label in the menu is pressed.
      if (relatedTarget && !byId('layers-menu').contains(relatedTarget)) byId('layers-menu').open = false;
    });
    byId('document').addEventListener('toggle', () => this.showWholeDocument());
    this.listenToViewer();
    this.listenToTables();
    this.listenToPrinting();
  }

  listenToViewer() {
    this.viewer.addEventListener('zoom', ({ detail }) => {
      byId('zoom').textContent = `${Math.round(detail * 100)} %`;
    });
    this.viewer.addEventListener('point', ({ detail }) => this.section && this.hoverPoint(detail));
    this.viewer.addEventListener('target', ({ detail }) => this.chooseTarget(detail));
    this.viewer.addEventListener('hover-target', ({ detail }) => {
      this.lightTarget(...detail, this.target);
    });
  }

  listenToTables() {
    for (const tab of TABS) {
      byId(`tab-${tab}`).addEventListener('click', () => this.openTab(tab));
      const panel = byId(`panel-${tab}`);
      const onRow = (action) => ({ target }) => {
        const row = target.closest('tr.choosable');
        if (row) action(row);
      };
      panel.addEventListener('mouseover', onRow((row) => this.enterRow(row)));
      panel.addEventListener('focusin', onRow((row) => this.enterRow(row)));
      panel.addEventListener('mouseleave', () => this.highlightTarget(this.target));
      panel.addEventListener('click', onRow((row) => this.chooseRow(row)));
      panel.addEventListener('keydown', (event) => {
        if (event.target === panel || ![' ', 'Enter'].includes(event.key)) return;
        onRow((row) => this.chooseRow(row))(event);
        event.preventDefault();
      });
    }
  }

  listenToPrinting() {
    const dialog = byId('print-dialog');
    byId('print').addEventListener('click', () => dialog.showModal());
    byId('print-start').addEventListener('click', async () => {
      const extent = dialog.querySelector('[name=extent]:checked').value;
      const wanted = extent === 'listed' ? this.found : [this.chosen].filter((section) => section >= 0);
      byId('print-start').disabled = true;
      try {
        await this.printing.print(wanted);
      } finally {
        byId('print-start').disabled = false;
        dialog.close();
      }
    });
    window.addEventListener('beforeprint', () => {
      if (this.section) this.printing.prepareNow(this.section, this.chosen);
    });
  }

  async showWholeDocument() {
    if (!byId('document').open) return;
    const { findings, targets } = await this.design.wholeDocument();
    const tables = [];
    if (findings.length > 0) tables.push(findingsTable(findings));
    if (targets.length > 0) tables.push(targetsWithoutSection(targets, this.design.index.sets));
    byId('document-findings').replaceChildren(...tables);
  }

  switchLayer(layer, isShown) {
    document.body.classList.toggle(`without-${layer}`, !isShown);
    if (!this.section) return;
    this.shown = this.shownPoints();
    this.viewer.showPoints(this.shown);
    if (this.ringed) this.hoverPoint(this.shown.find((point) => isSamePoint(point, this.ringed)));
  }

  /** Closes the menu of layers; the focus does not vanish with it. */
  closeLayers() {
    const menu = byId('layers-menu');
    if (menu.contains(document.activeElement)) menu.querySelector('summary').focus();
    menu.open = false;
  }

  onSearchKey(event) {
    if (event.key === 'Escape') {
      byId('search').value = '';
      this.filter();
    } else if (event.key === 'Enter' || event.key === 'ArrowDown') {
      if (this.found.length > 0) this.choose(this.found.includes(this.chosen) ? this.chosen : this.found[0]);
    } else {
      return;
    }
    event.preventDefault();
    byId('list').focus();
  }

  onKey(event) {
    if (event.defaultPrevented || event.ctrlKey || event.metaKey || event.altKey) return;
    if (event.target.closest('dialog')) return;
    if (event.key === 'Escape' && byId('layers-menu').open) return this.closeLayers();
    if (event.target.closest('input, select, textarea') || scrolls(event)) return;
    const tabs = event.target.closest('[role=tablist]');
    if (tabs && ['ArrowLeft', 'ArrowRight'].includes(event.key)) {
      const steps = event.key === 'ArrowRight' ? 1 : TABS.length - 1;
      this.openTab(TABS[(TABS.indexOf(this.tab) + steps) % TABS.length]);
      byId(`tab-${this.tab}`).focus();
      return event.preventDefault();
    }
    const action = Page.keys[event.key];
    if (!action) return;
    event.preventDefault();
    action(this);
  }

  static keys = {
    ArrowUp: (page) => page.step(-1),
    ArrowLeft: (page) => page.step(-1),
    ArrowDown: (page) => page.step(1),
    ArrowRight: (page) => page.step(1),
    PageUp: (page) => page.step(-10),
    PageDown: (page) => page.step(10),
    Home: (page) => page.step(-Infinity),
    End: (page) => page.step(Infinity),
    '+': (page) => page.viewer.zoomIn(),
    '=': (page) => page.viewer.zoomIn(),
    '-': (page) => page.viewer.zoomOut(),
    0: (page) => page.viewer.reset(),
    '/': () => {
      byId('search').focus();
      byId('search').select();
    },
    Escape: (page) => {
      page.target = -1;
      page.highlightTarget(-1);
    },
  };
}

new Page();
