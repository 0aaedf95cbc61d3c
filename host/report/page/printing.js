// --- printing --------------------------------------------------------------------------------------------------------

/** More pages than these make a browser's print preview useless. */
const MOST_PAGES = 500;

/** One page for a section: its drawing, what is wrong with it, and its control targets. */
function pageOf(design, section, at) {
  const { words } = speech;
  const { title } = design.entry(at);
  const page = make('article', { class: 'page' },
    make('h2', {}, title), make('p', { class: 'quiet' }, `${design.index.file} · ${words.position(at + 1, design.length)}`));
  const sheet = new Sheet(drawingOf(section), design.styles, title);
  page.append(make('div', { class: 'picture' }, sheet.asPage()));
  if (section.findings.length > 0) page.append(make('h3', {}, words.findings), findingsTable(section.findings));
  if (section.targets.length > 0) page.append(make('h3', {}, words.targets), targetsTable(section));
  return page;
}

/** Lets the browser show how far it is. */
function breathe() {
  return new Promise((resolve) => setTimeout(resolve));
}

/** Makes the pages just before they are printed and takes them away afterwards. */
class Printing {
  constructor(design, sheets, progress) {
    this.design = design;
    this.sheets = sheets;
    this.progress = progress;
    window.addEventListener('afterprint', () => this.clear());
  }

  clear() {
    this.sheets.replaceChildren();
    this.prepared = false;
    this.progress.textContent = '';
  }

  /** For the browser's own print command, which does not wait. */
  prepareNow(section, at) {
    if (!this.prepared) this.sheets.replaceChildren(pageOf(this.design, section, at));
  }

  async print(indices) {
    this.clear();
    const pages = [];
    for (const at of indices.slice(0, MOST_PAGES)) {
      pages.push(pageOf(this.design, await this.design.section(at), at));
      if (pages.length % 10 !== 0) continue;
      this.progress.textContent = speech.words.printing(pages.length, Math.min(indices.length, MOST_PAGES));
      await breathe();
    }
    this.sheets.replaceChildren(...pages);
    this.prepared = true;
    window.print();
  }
}
