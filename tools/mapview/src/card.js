// What is known of one transmitter: the content of its pop-up.
import { count, element } from './dom.js';
import { distance } from './geo.js';

/** The pop-up of a transmitter; `neighbours` share its place, `choose` is called with the one that the user picks. */
export function transmitterCard(transmitter, home, neighbours, choose) {
  const facts = [];
  if (transmitter.country) facts.push(transmitter.country);
  if (!transmitter.position) facts.push('no position');
  else if (home) facts.push(`${Math.round(distance(home, transmitter.position)).toLocaleString('en')} km`);
  facts.push(transmitter.receptions.length === 0 ? 'no reception listed' : count(transmitter.receptions.length, 'reception'));
  const card = element('div', { class: 'card' }, element('h2', {}, transmitter.site || 'No name'), element('p', {}, facts.join(' \u00b7 ')));
  if (transmitter.receptions.length > 0) card.append(receptionTable(transmitter.receptions));
  if (neighbours.length > 0) {
    card.append(element('p', { class: 'neighbours' }, 'At the same place: ', ...neighbours.map((other) => {
      const button = element('button', { type: 'button' }, other.name);
      button.addEventListener('click', () => choose(other));
      return button;
    })));
  }
  return card;
}

function receptionTable(receptions) {
  const rows = receptions.map((reception) => (
    'text' in reception
      ? element('tr', {}, element('td', { colspan: '4' }, reception.text))
      : element('tr', {}, ...['date', 'freq', 'pi', 'rds'].map((field) => element('td', { class: field }, reception[field])))
  ));
  const heading = element('tr', {}, ...['Date/Time', 'Freq', 'PI', 'RDS'].map((text) => element('th', { scope: 'col' }, text)));
  return element('div', { class: 'receptions', tabindex: '0', role: 'region', 'aria-label': 'Receptions' },
    element('table', {}, element('thead', {}, heading), element('tbody', {}, ...rows)));
}
