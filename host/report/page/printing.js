// --- printing --------------------------------------------------------------------------------------------------------

/** More pages than these make a browser's print preview useless. */
const MOST_PAGES = 500;

/** Highest drawing, in millimetres, that leaves a page its heading. */
const BELOW_HEADING = 262;

/** Texts of any length take a few lines each, so that one name does not fill pages. */
function clamp(table) {
  for (const cell of table.querySelectorAll('td')) {
    if (cell.childElementCount === 0) cell.replaceChildren(make('div', { class: 'cell' }, ...cell.childNodes));
  }
}

/** A table with a title that is repeated where it goes on with another page. */
function titled(title, content) {
  const table = content.matches('table') ? content : content.querySelector('table');
  const columns = table.tHead.rows[0].cells.length;
  clamp(table);
  table.tHead.prepend(make('tr', {}, make('th', { colspan: columns, class: 'table-title' }, make('p', {}, title))));
  return content;
}

/** One page for a section: its drawing, what is wrong with it, and its control targets. */
function pageOf(design, section, at) {
  const { words } = speech;
  const { title } = design.entry(at);
  const heading = [make('h2', {}, title),
    make('p', { class: 'quiet' }, `${design.index.file} · ${words.position(at + 1, design.length)}`)];
  const sheet = new Sheet(drawingOf(section), design.styles, title);
  const picture = make('div', { class: 'picture' }, sheet.asPage());
  const tables = [];
  const add = (name, content) => tables.push(titled(`${words[name]} · ${title}`, content));
  if (section.findings.length > 0) add('findings', findingsTable(section.findings));
  if (section.targets.length > 0) add('targets', targetsTable(section));
  // A drawing that needs all of a page has a title of its own; the heading is that of the tables then.
  const first = sheet.height <= BELOW_HEADING ? [...heading, picture] : [picture, ...(tables.length > 0 ? heading : [])];
  return make('article', { class: 'page' }, ...first, ...tables);
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
