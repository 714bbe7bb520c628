// The list beside the map: search, order, keyboard.
import { count, element } from './dom.js';
import { distance } from './geo.js';

/** Connects the controls { search, order, list, found }; `choose` gets a transmitter, `filter` a predicate. */
export function createList(controls, { choose, filter }) {
  const state = { ...controls, rows: [], active: null };
  controls.search.addEventListener('input', () => filter(applySearch(state)));
  controls.order.addEventListener('change', () => applyOrder(state));
  controls.search.addEventListener('keydown', (event) => {
    if (event.key !== 'ArrowDown' && event.key !== 'Enter') return;
    event.preventDefault();
    move(state, visibleRows(state)[0]);
    controls.list.focus();
  });
  controls.list.addEventListener('keydown', (event) => onKey(state, event, choose));
  controls.list.addEventListener('click', (event) => {
    const row = state.rows.find(({ node }) => node.contains(event.target));
    if (!row) return;
    move(state, row);
    choose(row.transmitter);
  });
  return state;
}

/** Fills the list. With `home` known, distances are shown and can order it. */
export function fillList(state, transmitters, home) {
  state.active = null;
  state.search.value = '';
  state.order.querySelector('[value=distance]').hidden = !home;
  state.rows = transmitters.map((transmitter, i) => {
    const km = home && transmitter.position ? distance(home, transmitter.position) : null;
    return { transmitter, km, found: true, words: words(transmitter), node: rowNode(transmitter, km, i) };
  });
  applyOrder(state);
  applySearch(state);
}

function words({ name, receptions }) {
  const fields = receptions.flatMap(({ pi = '', rds = '', freq = '', text = '' }) => [pi, rds, freq, text]);
  return [name, ...new Set(fields)].join('\n').toLowerCase();
}

function rowNode(transmitter, km, i) {
  const facts = [];
  if (transmitter.country) facts.push(transmitter.country);
  if (!transmitter.position) facts.push('no position');
  if (km !== null) facts.push(`${Math.round(km).toLocaleString('en')} km`);
  const dot = element('i', { 'aria-hidden': 'true' });
  if (transmitter.colour) dot.style.background = transmitter.colour;
  if (!transmitter.position) dot.className = 'unplaced';
  return element('li', { role: 'option', id: `transmitter${i}`, 'aria-selected': 'false' },
    dot, element('b', {}, transmitter.site || 'No name'), element('span', {}, facts.join(' \u00b7 ')),
    element('em', { title: count(transmitter.receptions.length, 'reception') }, transmitter.receptions.length > 0 ? String(transmitter.receptions.length) : ''));
}

function applyOrder(state) {
  const { compare } = new Intl.Collator(undefined, { numeric: true });
  const byName = (a, b) => compare(a.transmitter.name, b.transmitter.name);
  const orders = {
    name: byName,
    country: (a, b) => compare(a.transmitter.country, b.transmitter.country) || byName(a, b),
    receptions: (a, b) => b.transmitter.receptions.length - a.transmitter.receptions.length || byName(a, b),
    distance: (a, b) => (b.km ?? -1) - (a.km ?? -1) || byName(a, b),
  };
  state.rows.sort(orders[state.order.value] ?? byName);
  state.list.replaceChildren(...state.rows.map(({ node }) => node));
}

function applySearch(state) {
  const wanted = state.search.value.trim().toLowerCase();
  const found = new Set();
  for (const row of state.rows) {
    row.found = row.words.includes(wanted);
    row.node.hidden = !row.found;
    if (row.found) found.add(row.transmitter);
  }
  state.found.textContent = wanted === '' ? '' : `${found.size.toLocaleString('en')} found`;
  return (transmitter) => found.has(transmitter);
}

function visibleRows(state) {
  return state.rows.filter(({ found }) => found);
}

function move(state, row) {
  if (!row) return;
  state.active?.node.setAttribute('aria-selected', 'false');
  state.active = row;
  row.node.setAttribute('aria-selected', 'true');
  row.node.scrollIntoView({ block: 'nearest' });
  state.list.setAttribute('aria-activedescendant', row.node.id);
}

function onKey(state, event, choose) {
  const rows = visibleRows(state);
  const at = rows.indexOf(state.active);
  const targets = { ArrowDown: at + 1, ArrowUp: at < 0 ? 0 : at - 1, Home: 0, End: rows.length - 1, PageDown: at + 10, PageUp: at - 10 };
  if (event.key in targets) {
    event.preventDefault();
    move(state, rows[Math.max(0, Math.min(rows.length - 1, targets[event.key]))]);
  } else if ((event.key === 'Enter' || event.key === ' ') && at >= 0) {
    event.preventDefault();
    choose(state.active.transmitter);
  }
}
