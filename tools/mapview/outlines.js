// The outlines as the page carries them: arcs of flat differences, rings of arc numbers, and where a country's name stands.

/** JSON text of { scale, translate, arcs, polygons, labels } from a topology whose object `countries` holds areas. */
export function outlines(topology) {
  const { scale, translate } = topology.transform;
  const areas = topology.objects.countries.geometries;
  const polygonsOf = ({ type, arcs }) => (type === 'Polygon' ? [arcs] : type === 'MultiPolygon' ? arcs : []);
  const labels = areas.flatMap((area) => label(area.properties.name, polygonsOf(area), topology));
  return JSON.stringify({
    scale: scale.map((step) => Number(step.toPrecision(12))),
    translate: translate.map((origin) => Number(origin.toPrecision(12))),
    arcs: topology.arcs.map((arc) => arc.flat()),
    polygons: areas.flatMap(polygonsOf),
    labels,
  }).replace(/</g, '\\u003c');
}

function ringPoints(ring, { transform, arcs }) {
  const points = ring.flatMap((index) => {
    let x = 0;
    let y = 0;
    const line = arcs[index < 0 ? ~index : index].map(([dx, dy]) => {
      x += dx;
      y += dy;
      return [x * transform.scale[0] + transform.translate[0], y * transform.scale[1] + transform.translate[1]];
    });
    return index < 0 ? line.reverse() : line;
  });
  // Beyond the date line longitudes go on past 180.
  const turns = points.map(([lon], i) => (i > 0 ? -Math.round((lon - points[i - 1][0]) / 360) : 0));
  let turn = 0;
  return points.map(([lon, lat], i) => [lon + 360 * (turn += turns[i]), lat]);
}

// On the map, one degree of latitude is 1 / cos(latitude) degrees of longitude long.
function label(name, polygons, topology) {
  const rings = polygons.map((polygon) => ringPoints(polygon[0], topology));
  const largest = rings.reduce((best, ring) => (area(ring) > area(best) ? ring : best), []);
  if (largest.length === 0 || name === 'Antarctica') return [];
  const { lon, lat, room } = roomiest(largest);
  // A label of about seven pixels a letter fits where the free half-width is that of the text.
  const zoom = Math.ceil(Math.log2((name.length * 3 * 360) / (256 * room)));
  return [{ name, lat: Number(lat.toFixed(2)), lon: Number(lon.toFixed(2)), zoom: Math.max(3, Math.min(9, zoom)) }];
}

function area(ring) {
  let sum = 0;
  for (let i = 0; i < ring.length; i++) {
    const [x1, y1] = ring[i];
    const [x2, y2] = ring[(i + 1) % ring.length];
    sum += x1 * y2 - x2 * y1;
  }
  return Math.abs(sum / 2);
}

// The place inside a ring that is farthest from its edge, on a grid.
function roomiest(ring) {
  const [lons, lats] = [ring.map(([x]) => x), ring.map(([, y]) => y)];
  const [west, east, south, north] = [Math.min(...lons), Math.max(...lons), Math.min(...lats), Math.max(...lats)];
  let best = { lon: (west + east) / 2, lat: (south + north) / 2, room: 0 };
  for (let i = 1; i < 32; i++) {
    for (let k = 1; k < 32; k++) {
      const lon = west + ((east - west) * i) / 32;
      const lat = south + ((north - south) * k) / 32;
      const room = inside(ring, lon, lat) ? distanceToEdge(ring, lon, lat) : 0;
      if (room > best.room) best = { lon, lat, room };
    }
  }
  return best.room > 0 ? best : { ...best, room: (east - west) / 4 || 0.01 };
}

function inside(ring, lon, lat) {
  let within = false;
  for (let i = 0, j = ring.length - 1; i < ring.length; j = i++) {
    const [xi, yi] = ring[i];
    const [xj, yj] = ring[j];
    if (yi > lat !== yj > lat && lon < ((xj - xi) * (lat - yi)) / (yj - yi) + xi) within = !within;
  }
  return within;
}

function distanceToEdge(ring, lon, lat) {
  const stretch = 1 / Math.cos((lat * Math.PI) / 180);
  let nearest = Infinity;
  for (const [x, y] of ring) nearest = Math.min(nearest, (x - lon) ** 2 + ((y - lat) * stretch) ** 2);
  return Math.sqrt(nearest);
}
