// The page: which file to show, how to get it, and what to say when that fails.
import { decodeText, fileNameProblem, fromBase64, queryValue } from './bytes.js';
import { transmitterCard } from './card.js';
import { count } from './dom.js';
import { parsePosition } from './geo.js';
import { readKml } from './kml.js';
import { createList, fillList } from './list.js';
import { createMap, fitToData, openPopup, placeHome, placeTransmitters, showTiles, showTransmitters } from './map.js';
import { decodeWorld } from './world.js';

const largestFile = 64 * 1024 * 1024;
const byId = (id) => document.getElementById(id);
const setting = (name) => document.querySelector(`meta[name="${name}"]`)?.content ?? '';
const codePage = setting('kml-charset') || 'windows-1252';

const map = createMap(byId('map'), decodeWorld(JSON.parse(byId('world').textContent)), (transmitter) => choose(transmitter, false));
const list = createList(
  { search: byId('search'), order: byId('order'), list: byId('list'), found: byId('found') },
  { choose: (transmitter) => choose(transmitter, true), filter: (wanted) => showTransmitters(map, wanted) },
);
let home = null;
let places = new Map();

function placeKey({ position }) {
  return `${position.lat},${position.lon}`;
}

function choose(transmitter, closer) {
  const neighbours = transmitter.position ? places.get(placeKey(transmitter)).filter((other) => other !== transmitter) : [];
  const card = transmitterCard(transmitter, home, neighbours, (other) => choose(other, false));
  byId('unplaced').hidden = true;
  if (transmitter.position) {
    if (closer) showPanel(false);
    openPopup(map, transmitter, card, closer);
    return;
  }
  closeCards();
  byId('unplacedcard').replaceChildren(card);
  byId('unplaced').hidden = false;
}

function closeCards() {
  map.map.closePopup();
  byId('unplaced').hidden = true;
}

function show(name, bytes) {
  let kml;
  try {
    if (bytes.byteLength > largestFile) throw new Error(`it is larger than ${largestFile / 1024 / 1024} MiB`);
    kml = readKml(decodeText(bytes, codePage), codePage);
  } catch (error) {
    explain(`${name} cannot be shown`, `${name} cannot be read as a map: ${error.message}.`);
    return;
  }
  const { transmitters } = kml;
  const unplaced = transmitters.filter(({ position }) => !position).length;
  places = new Map();
  for (const transmitter of transmitters.filter(({ position }) => position)) {
    const key = placeKey(transmitter);
    if (!places.has(key)) places.set(key, []);
    places.get(key).push(transmitter);
  }
  byId('explanation').hidden = true;
  byId('unplaced').hidden = true;
  document.title = kml.name || name;
  byId('title').textContent = kml.name || name;
  byId('summary').textContent = summary(transmitters, unplaced);
  byId('map').setAttribute('aria-label', `Map of ${count(transmitters.length - unplaced, 'transmitter')}`);
  fillList(list, transmitters, home);
  placeTransmitters(map, transmitters);
  fitToData(map);
  document.body.dataset.state = 'shown';
}

function summary(transmitters, unplaced) {
  if (transmitters.length === 0) return 'No transmitter in this file';
  const receptions = transmitters.reduce((sum, transmitter) => sum + transmitter.receptions.length, 0);
  const parts = [count(transmitters.length, 'transmitter')];
  if (receptions > 0) parts.push(count(receptions, 'reception'));
  if (unplaced > 0) parts.push(`${count(unplaced, 'transmitter')} ${unplaced === 1 ? 'has' : 'have'} no position`);
  return parts.join(' \u00b7 ');
}

function explain(title, text) {
  byId('explanationtitle').textContent = title;
  byId('explanationtext').textContent = text;
  byId('explanation').hidden = false;
  document.body.dataset.state = 'explained';
}

function askFor(name) {
  explain('One more step', `This page was opened from a disk, and there a browser does not let it read ${name}, the file beside it. `
    + `The export writes the same data as ${name}.js, but that is not here, or holds no map. `
    + `Drop ${name} here, or choose it; it is in the folder of this page. On a web server the map opens by itself.`);
}

/**
 * On a disk a page may not read the file beside it, but may load a script from there: NAME.js of the export sets one text,
 * the bytes of the file in base64. Null when there is no such script.
 */
function bytesBeside(name) {
  return new Promise((resolve) => {
    const script = document.createElement('script');
    const done = (bytes) => {
      script.remove();
      resolve(bytes);
    };
    script.addEventListener('load', () => done(fromBase64(window.quillonMap)));
    script.addEventListener('error', () => done(null));
    script.src = `${encodeURIComponent(name)}.js`;
    document.head.append(script);
  });
}

async function load(name) {
  const problem = fileNameProblem(name);
  if (problem) {
    explain('This map cannot be shown', `The address asks for "${name}", but ${problem}.`);
    return;
  }
  byId('title').textContent = name;
  if (location.protocol === 'file:') {
    const bytes = await bytesBeside(name);
    if (document.body.dataset.state) return; // a file was dropped meanwhile
    if (bytes) show(name, bytes);
    else askFor(name);
    return;
  }
  try {
    const response = await fetch(encodeURIComponent(name));
    if (!response.ok) throw new Error(response.status === 404 ? 'it is not on the server' : `the server answers ${response.status}`);
    show(name, await response.arrayBuffer());
  } catch (error) {
    explain(`${name} cannot be loaded`, `${name} cannot be loaded: ${error.message}.`);
  }
}

async function open(files) {
  if (files.length === 0) return;
  try {
    show(files[0].name, await files[0].arrayBuffer());
  } catch (error) {
    explain(`${files[0].name} cannot be read`, `${files[0].name} cannot be read: ${error.message}.`);
  }
}

function connectFiles() {
  for (const picker of document.querySelectorAll('input[type=file]')) {
    picker.addEventListener('change', async () => {
      await open([...picker.files]);
      picker.value = '';
    });
  }
  for (const type of ['dragenter', 'dragover', 'dragleave', 'drop']) {
    addEventListener(type, (event) => {
      event.preventDefault();
      document.body.classList.toggle('dropping', type === 'dragenter' || type === 'dragover');
      if (type === 'drop') open([...event.dataTransfer.files]);
    });
  }
}

function connectTiles() {
  const button = byId('tiles');
  const set = (wished) => {
    button.setAttribute('aria-pressed', String(wished));
    showTiles(map, wished, () => {
      set(false);
      say('The street map cannot be loaded.');
    });
  };
  button.addEventListener('click', () => {
    say('');
    if (navigator.onLine) set(button.getAttribute('aria-pressed') !== 'true');
    else say('The street map needs the network, and this computer is offline.');
  });
}

function say(text) {
  byId('notice').textContent = text;
}

function showPanel(open) {
  document.body.classList.toggle('listed', open);
  byId('panelbutton').setAttribute('aria-expanded', String(open));
}

function start() {
  connectFiles();
  connectTiles();
  byId('panelbutton').addEventListener('click', () => showPanel(!document.body.classList.contains('listed')));
  byId('unplacedclose').addEventListener('click', closeCards);
  addEventListener('keydown', (event) => { if (event.key === 'Escape') closeCards(); });
  byId('fit').addEventListener('click', () => fitToData(map));
  home = parsePosition(queryValue(location.search, 'home', codePage) ?? setting('home'));
  if (home) placeHome(map, home);
  const name = queryValue(location.search, 'kml', codePage);
  byId('index').hidden = name === null;
  if (name === null) explain('Which map?', 'Drop a KML file of the log here, or choose one.');
  else load(name);
}

start();
