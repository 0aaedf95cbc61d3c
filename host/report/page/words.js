// --- words -----------------------------------------------------------------------------------------------------------

/** Everything the page says by itself. Texts of the design are never translated. */
const WORDS = {
  en: {
    language: 'Language', print: 'Print…', cancel: 'Cancel', sections: 'Cross sections', search: 'Search',
    searchHint: 'Station, name or code ( / )', onlyFindings: 'Only with findings', noSections: 'There is no cross section.',
    former: 'Former section (←)', next: 'Next section (→)', zoomOut: 'Smaller (−)', zoomIn: 'Larger (+)', zoom: 'Magnification',
    reset: 'Fit', resetTip: 'Whole drawing (0)', layers: 'Layers', tables: 'Details of the section',
    keys: '← → ↑ ↓ sections · Page ↑ ↓ ten sections · + − 0 zoom · / search · drag to move, wheel or pinch to zoom',
    printChosen: 'This cross section',
    printListed: (count) => `Every listed cross section (${count})`,
    printLimit: (most, count) => `At most ${most} of ${count} are printed at once: narrow the list by a search.`,
    printing: (done, all) => `Drawing ${done} of ${all}…`,
    edition: 'Edition', assumed: 'assumed',
    sectionCount: (count) => (count === 1 ? '1 cross section' : `${count} cross sections`),
    listed: (count, all) => (count === all ? WORDS.en.sectionCount(all) : `${count} of ${WORDS.en.sectionCount(all)}`),
    errors: (count) => (count === 1 ? '1 error' : `${count} errors`),
    notes: (count) => (count === 1 ? '1 note' : `${count} notes`),
    noFindings: 'nothing wrong',
    document: 'Document as a whole', error: 'Error', note: 'Note', view: 'Drawing',
    findings: 'Findings', targets: 'Control targets', points: 'Points',
    nothingFound: 'Nothing is wrong in this cross section.', noTargets: 'No control targets.', noPoints: 'No points.',
    more: (count) => `and ${count} more`,
    targetsWithoutSection: (count) => (count === 1 ? '1 control target at no cross section' : `${count} control targets at no cross section`),
    stationsWithoutSection: 'no cross section is at the station of any of its points', targetWithoutPoints: 'it names no points',
    position: (at, all) => `${at} of ${all}`, controlSection: 'control section', behindChange: 'behind the change of shape', behindShort: 'behind change',
    centerHeight: (height) => `Centre line ${height} m`, assumedHeight: 'assumed from the ground', relative: 'heights are relative to the centre line',
    severity: '', kind: 'What', where: 'Where', reason: 'Why',
    item: 'Item', value: 'Design value', targetPoints: 'Points', form: 'Build form', workType: 'Work type',
    scope: 'Scope', regulation: 'Region', offset: 'Offset', height: 'Height', code: 'Code', from: 'From',
    side: 'Side', part: 'Part', input: 'Input', grade: 'Slope', ground: 'Existing ground', remarks: 'Remarks',
    absent: 'not built', crossing: 'crossing with the ground', missing: 'does not exist here',
    elsewhere: (station, isBehindChange) => `at station ${station}${isBehindChange ? `, ${WORDS.en.behindChange}` : ''}`,
    withoutCode: 'no code',
    alsoHere: 'also here', broken: 'This part of the page cannot be read; the file may be damaged.',
    parts: { start: 'Start', roadbed: 'Roadbed', slope: 'Slope', berm: 'Berm', other: 'Other' }, sides: {}, kinds: {},
    items: { SlopeLength: 'Slope length', XSectArea: 'Section area' },
    workTypes: { RE_CutWork: 'Cut', RE_FillWork: 'Fill' },
    layerNames: {
      'design-surface': 'Design surface', slope: 'Slopes and berms', 'pavement-layer': 'Pavement layers',
      'other-form': 'Other forms', ground: 'Existing ground', 'ground-hatch': 'Ground hatch', crossing: 'Crossings',
      'center-line': 'Centre line', code: 'Codes', grade: 'Slopes and grades', dimension: 'Control targets',
      frame: 'Frame and axes', title: 'Title',
    },
  },
  ja: {
    language: '言語', print: '印刷…', cancel: 'キャンセル', sections: '横断面', search: '検索',
    searchHint: '測点・名称・コード ( / )', onlyFindings: '指摘のあるものだけ', noSections: '横断面がありません。',
    former: '前の断面 (←)', next: '次の断面 (→)', zoomOut: '縮小 (−)', zoomIn: '拡大 (+)', zoom: '倍率',
    reset: '全体', resetTip: '全体を表示 (0)', layers: '表示項目', tables: '断面の詳細',
    keys: '← → ↑ ↓ 断面の移動 · Page ↑ ↓ 10断面 · + − 0 拡大縮小 · / 検索 · ドラッグで移動、ホイール・ピンチで拡大縮小',
    printChosen: 'この横断面',
    printListed: (count) => `一覧の全横断面（${count}）`,
    printLimit: (most, count) => `一度に印刷できるのは ${count} 断面のうち ${most} 断面までです。検索で絞り込んでください。`,
    printing: (done, all) => `作図中 ${done} / ${all}…`,
    edition: '版', assumed: '仮定',
    sectionCount: (count) => `横断面 ${count}`,
    listed: (count, all) => (count === all ? `横断面 ${all}` : `横断面 ${count} / ${all}`),
    errors: (count) => `エラー ${count}`,
    notes: (count) => `注記 ${count}`,
    noFindings: '指摘なし',
    document: '文書全体', error: 'エラー', note: '注記', view: '作図',
    findings: '指摘', targets: '管理対象', points: '構成点',
    nothingFound: 'この横断面に指摘はありません。', noTargets: '管理対象はありません。', noPoints: '構成点はありません。',
    more: (count) => `ほか ${count} 件`,
    targetsWithoutSection: (count) => `どの横断面にも属さない管理対象 ${count} 件`,
    stationsWithoutSection: 'どの構成点の測点にも横断面がない', targetWithoutPoints: '構成点の指定がない',
    position: (at, all) => `${at} / ${all}`, controlSection: '管理断面', behindChange: '断面変化点の後', behindShort: '変化後',
    centerHeight: (height) => `中心線の標高 ${height} m`, assumedHeight: '現況地盤からの仮定', relative: '高さは中心線からの値',
    severity: '', kind: '内容', where: '場所', reason: '理由',
    item: '管理項目', value: '設計値', targetPoints: '構成点', form: '構築形状', workType: '工種',
    scope: '対象範囲', regulation: '対象部位', offset: '離れ', height: '高さ', code: 'コード', from: '基準点',
    side: '左右', part: '種別', input: '入力値', grade: '勾配', ground: '現況地盤', remarks: '備考',
    absent: '構築しない', crossing: '現況との交点', missing: 'この断面にない',
    elsewhere: (station, isBehindChange) => `測点 ${station}${isBehindChange ? `、${WORDS.ja.behindChange}` : ''}`,
    withoutCode: 'コードなし',
    alsoHere: '同じ位置', broken: 'ページのこの部分を読めません。ファイルが壊れている可能性があります。',
    parts: { start: '起点', roadbed: '路体', slope: '法面', berm: '小段', other: 'その他' },
    sides: { Center: '中心', Left: '左', Right: '右' },
    items: {
      Width: '幅員', Height: '基準高', SlopeLength: '法長', Thickness: '厚さ', Depth: '深さ', Length: '延長', XSectArea: '断面積', Area: '面積',
    },
    workTypes: { RE_CutWork: '切土工', RE_FillWork: '盛土工' },
    kinds: {
      'value not understood': '理解できない値', 'station out of order': '測点の順序が不正', 'station doubled': '測点が重複',
      'code used twice': 'コードが重複', 'control target names what does not exist': '管理対象が存在しないものを指している',
      'control target outside a build form': '管理対象が構築形状の外にある', 'no tsf:StructureType': 'tsf:StructureType がない',
    },
    layerNames: {
      'design-surface': '設計面', slope: '法面・小段', 'pavement-layer': '舗装層', 'other-form': 'その他の形状',
      ground: '現況地盤', 'ground-hatch': '地盤のハッチ', crossing: '現況との交点', 'center-line': '中心線', code: 'コード',
      grade: '勾配', dimension: '管理対象', frame: '枠と軸', title: '表題',
    },
  },
};

/** The language in use, and what it calls things. */
const speech = {
  language: 'en',
  get words() {
    return WORDS[this.language];
  },
  /** @param {?string} wanted the language the report was made with; the reader's own without one */
  begin(wanted) {
    this.language = wanted ?? (navigator.language.toLowerCase().startsWith('ja') ? 'ja' : 'en');
  },
};

/** Gives every element that is marked for it its text, label and hint. */
function label(root) {
  const { words } = speech;
  document.documentElement.lang = speech.language;
  for (const element of root.querySelectorAll('[data-word]')) element.textContent = words[element.dataset.word];
  for (const element of root.querySelectorAll('[data-label]')) element.ariaLabel = words[element.dataset.label];
  for (const element of root.querySelectorAll('[data-tip]')) element.title = words[element.dataset.tip];
  for (const element of root.querySelectorAll('[data-hint]')) element.placeholder = words[element.dataset.hint];
}

/** "2 errors, 1 note" */
function findingsText(errors, notes) {
  const { words } = speech;
  const parts = [];
  if (errors > 0) parts.push(words.errors(errors));
  if (notes > 0) parts.push(words.notes(notes));
  return parts.join(speech.language === 'ja' ? '、' : ', ') || words.noFindings;
}

/** How high the centre line lies, and whether that is only assumed. */
function heightText({ centerHeight, isHeightAssumed }) {
  const { words } = speech;
  if (centerHeight === null) return words.relative;
  const height = words.centerHeight(metres(centerHeight));
  return isHeightAssumed ? `${height} (${words.assumedHeight})` : height;
}

/** Metres with the four decimals of a document, which the page's numbers are rounded to; a dash for none. */
function metres(value) {
  return value === null ? '–' : value.toFixed(4);
}
