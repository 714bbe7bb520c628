// The outlines of land and borders: arcs shared by the countries on both sides, as differences of grid steps.

/**
 * The inlined outlines as { polygons, coasts, borders, labels }: `polygons` are lists of rings, a ring and a line are
 * lists of [lat, lon]; a label is { name, lat, lon, zoom }, `zoom` being the first level at which there is room for it.
 */
export function decodeWorld({ scale, translate, arcs, polygons, labels }) {
  const lines = arcs.map((arc) => continuous(decodeArc(arc, scale, translate)));
  const uses = new Uint8Array(lines.length);
  const ring = (indices) => {
    const points = [];
    for (const index of indices) {
      const i = index < 0 ? ~index : index;
      uses[i] = Math.min(2, uses[i] + 1);
      const line = index < 0 ? lines[i].slice().reverse() : lines[i];
      for (let k = points.length > 0 ? 1 : 0; k < line.length; k++) points.push(line[k]);
    }
    return closeAtPole(continuous(points));
  };
  const rings = polygons.map((polygon) => polygon.map(ring));
  const drawn = (count) => lines.filter((_, i) => uses[i] === count).flatMap((line) => repeat([line])).flat();
  return { polygons: rings.flatMap(repeat), coasts: drawn(1), borders: drawn(2), labels };
}

function decodeArc(arc, scale, translate) {
  const line = [];
  let x = 0;
  let y = 0;
  for (let i = 0; i < arc.length; i += 2) {
    x += arc[i];
    y += arc[i + 1];
    line.push([y * scale[1] + translate[1], x * scale[0] + translate[0]]);
  }
  return line;
}

// Land goes on beyond the date line: a longitude there follows the one before it, past 180.
function continuous(line) {
  let turn = 0;
  return line.map(([lat, lon], i) => {
    const step = i > 0 ? lon - line[i - 1][1] : 0;
    if (step > 180) turn -= 360;
    if (step < -180) turn += 360;
    return [lat, lon + turn];
  });
}

// The coast that goes round the pole ends a whole turn from where it began.
function closeAtPole(ring) {
  const [first, last] = [ring[0], ring[ring.length - 1]];
  return Math.abs(last[1] - first[1]) > 180 ? [...ring, [-90, last[1]], [-90, first[1]], first] : ring;
}

// What reaches over the date line is drawn at both edges of the map.
function repeat(shape) {
  const longitudes = shape[0].map(([, lon]) => lon);
  const [west, east] = [longitudes.reduce((a, b) => Math.min(a, b)), longitudes.reduce((a, b) => Math.max(a, b))];
  const moved = (turn) => shape.map((line) => line.map(([lat, lon]) => [lat, lon + turn]));
  const shapes = [shape];
  if (west < -168) shapes.push(moved(360));
  if (east > 180) shapes.push(moved(-360));
  return shapes;
}
