// The map: outlines, markers, the way from home; street tiles only when they are asked for.
import { element, styleValue } from './dom.js';
import { destination, greatCircle } from './geo.js';

const L = globalThis.L;
const tileAddress = 'https://tile.openstreetmap.org/{z}/{x}/{y}.png';
const tileSource = '&copy; <a href="https://www.openstreetmap.org/copyright">OpenStreetMap</a> contributors';
const defaultColour = '#ffaa00';

/** A map in `container`; `choose` is called with the transmitter whose marker is clicked. */
export function createMap(container, world, choose) {
  const still = matchMedia('(prefers-reduced-motion: reduce)').matches;
  const map = L.map(container, {
    minZoom: 1, maxZoom: 11, zoomControl: false, attributionControl: false, maxBounds: [[-85.05, -215], [85.05, 215]],
    zoomAnimation: !still, fadeAnimation: !still, markerZoomAnimation: !still,
  }).setView([50, 10], 4);
  L.control.scale({ position: 'bottomleft' }).addTo(map);
  L.control.attribution({ prefix: '<a href="https://leafletjs.com">Leaflet</a>' })
    .addAttribution('Outlines: Natural Earth').addTo(map);
  L.control.zoom({ position: 'bottomright' }).addTo(map);

  const state = {
    map,
    land: landLayer(map, world),
    labels: labelLayer(map, world.labels),
    markers: L.featureGroup().addTo(map),
    home: L.featureGroup().addTo(map),
    path: L.featureGroup().addTo(map),
    tiles: null,
    // A finger is not a mouse.
    renderer: L.canvas({ padding: 0.3, tolerance: matchMedia('(pointer: coarse)').matches ? 10 : 3 }),
    byTransmitter: new Map(),
  };
  state.markers.on('click', (event) => choose(event.layer.transmitter));
  state.markers.bindTooltip((layer) => element('span', {}, layer.transmitter.name), { direction: 'top', offset: [0, -4] });
  map.on('popupclose', () => state.path.clearLayers());
  matchMedia('(prefers-color-scheme: dark)').addEventListener('change', () => recolour(state));
  new ResizeObserver(() => map.invalidateSize({ animate: false })).observe(container);
  return state;
}

function landLayer(map, world) {
  map.createPane('land').style.zIndex = 190;
  const renderer = L.canvas({ pane: 'land', padding: 0.3 });
  const still = { pane: 'land', renderer, interactive: false };
  const land = L.layerGroup([
    L.polygon(world.polygons, { ...still, stroke: false, fillOpacity: 1 }),
    L.polyline(world.borders, { ...still, weight: 1 }),
    L.polyline(world.coasts, { ...still, weight: 1 }),
  ]).addTo(map);
  colourLand(land);
  return land;
}

function colourLand(land) {
  const [ground, borders, coasts] = land.getLayers();
  ground.setStyle({ fillColor: styleValue('--land') });
  borders.setStyle({ color: styleValue('--border') });
  coasts.setStyle({ color: styleValue('--coast') });
}

function labelLayer(map, labels) {
  const pane = map.createPane('labels');
  pane.style.zIndex = 195;
  pane.style.pointerEvents = 'none';
  const layer = L.layerGroup().addTo(map);
  const tooltips = labels.map(({ name, lat, lon }) => (
    L.tooltip([lat, lon], {
      pane: 'labels', permanent: true, direction: 'center', className: 'label', content: element('span', {}, name), opacity: 1,
    })));
  const show = () => tooltips.forEach((tooltip, i) => {
    const fits = map.getZoom() >= labels[i].zoom;
    if (fits && !layer.hasLayer(tooltip)) layer.addLayer(tooltip);
    if (!fits && layer.hasLayer(tooltip)) layer.removeLayer(tooltip);
  });
  map.on('zoomend', show);
  show();
  return layer;
}

function recolour(state) {
  colourLand(state.land);
  for (const marker of state.byTransmitter.values()) marker.setStyle({ color: styleValue('--marker-edge') });
}

/** Puts a marker where each transmitter with a position stands, the often heard ones larger and below the others. */
export function placeTransmitters(state, transmitters) {
  state.map.closePopup();
  state.markers.clearLayers();
  state.byTransmitter.clear();
  const anyHeard = transmitters.some(({ receptions }) => receptions.length > 0);
  const edge = styleValue('--marker-edge');
  const placed = transmitters.filter(({ position }) => position);
  for (const transmitter of placed.sort((a, b) => b.receptions.length - a.receptions.length)) {
    const heard = transmitter.receptions.length;
    const faint = anyHeard && heard === 0;
    const marker = L.circleMarker([transmitter.position.lat, transmitter.position.lon], {
      renderer: state.renderer, bubblingMouseEvents: false, weight: 1, color: edge,
      radius: faint ? 3 : 4.5 + Math.min(5, Math.log2(1 + heard) * 0.7),
      fillColor: transmitter.colour ?? defaultColour, fillOpacity: faint ? 0.35 : 0.9,
    });
    marker.transmitter = transmitter;
    state.byTransmitter.set(transmitter, marker);
  }
  showTransmitters(state, () => true);
}

/** Leaves the markers of those transmitters that `wanted` accepts. */
export function showTransmitters(state, wanted) {
  let shown = 0;
  for (const [transmitter, marker] of state.byTransmitter) {
    const show = wanted(transmitter);
    if (show) shown++;
    if (show !== state.markers.hasLayer(marker)) state.markers[show ? 'addLayer' : 'removeLayer'](marker);
  }
  state.map.getContainer().dataset.markers = String(shown);
}

/** Shows everything that is placed, home included. */
export function fitToData(state) {
  const bounds = L.latLngBounds([]);
  for (const marker of state.byTransmitter.values()) bounds.extend(marker.getLatLng());
  if (state.homePosition) bounds.extend([state.homePosition.lat, state.homePosition.lon]);
  if (bounds.isValid()) state.map.fitBounds(bounds, { padding: [36, 36], maxZoom: 8, animate: false });
}

/** Marks the listener's place, with circles 500 km apart. */
export function placeHome(state, home) {
  state.homePosition = home;
  const quiet = { interactive: false, renderer: state.renderer };
  for (const km of [500, 1000, 1500, 2000]) {
    const circle = Array.from({ length: 121 }, (_, i) => destination(home, i * 3, km)).map(({ lat, lon }) => [lat, lon]);
    L.polyline(circle, { ...quiet, className: 'ring', weight: 1, color: '#7d8590', opacity: 0.55, dashArray: '2 5' }).addTo(state.home);
    const north = destination(home, 0, km);
    L.tooltip([north.lat, north.lon], {
      permanent: true, direction: 'center', className: 'label', content: element('span', {}, `${km} km`), opacity: 1,
    }).addTo(state.home);
  }
  L.circleMarker([home.lat, home.lon], { ...quiet, radius: 6, weight: 3, color: '#0a84d6', fillColor: '#ffffff', fillOpacity: 1 }).addTo(state.home);
}

/** Opens `content` at a transmitter and draws the way from home. `closer` moves the map to it as well. */
export function openPopup(state, transmitter, content, closer) {
  const place = [transmitter.position.lat, transmitter.position.lon];
  if (closer) state.map.setView(place, Math.max(state.map.getZoom(), 6), { animate: false });
  const maxWidth = Math.min(400, state.map.getSize().x - 64);
  L.popup({ maxWidth, minWidth: Math.min(240, maxWidth), autoPanPadding: [16, 24] }).setLatLng(place).setContent(content).openOn(state.map);
  state.path.clearLayers();
  if (!state.homePosition) return;
  L.polyline(greatCircle(state.homePosition, transmitter.position), {
    interactive: false, renderer: state.renderer, weight: 2, color: '#0a84d6', opacity: 0.8,
  }).addTo(state.path);
}

/** Street tiles instead of the outlines, or back; `failed` is called when none can be loaded. */
export function showTiles(state, wished, failed) {
  state.tiles?.remove();
  state.tiles = null;
  state.map.setMaxZoom(wished ? 18 : 11);
  for (const layer of [state.land, state.labels]) {
    if (wished) layer.remove();
    else layer.addTo(state.map);
  }
  if (!wished) return;
  let loaded = false;
  state.tiles = L.tileLayer(tileAddress, { maxZoom: 18, attribution: tileSource })
    .on('tileload', () => { loaded = true; })
    .on('tileerror', () => { if (!loaded) failed(); })
    .addTo(state.map);
}
