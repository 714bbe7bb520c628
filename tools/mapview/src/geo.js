// Distances and lines on the sphere. Positions are { lat, lon } in degrees, distances kilometres.

const radius = 6371;
const rad = Math.PI / 180;

/** Great-circle distance. Source: haversine formula. */
export function distance(a, b) {
  const h = Math.sin(((b.lat - a.lat) * rad) / 2) ** 2
    + Math.cos(a.lat * rad) * Math.cos(b.lat * rad) * Math.sin(((b.lon - a.lon) * rad) / 2) ** 2;
  return 2 * radius * Math.asin(Math.min(1, Math.sqrt(h)));
}

/** The place `km` away in the direction `bearing` (degrees from north, clockwise). Its longitude may pass 180. */
export function destination(from, bearing, km) {
  const d = km / radius;
  const lat = Math.asin(Math.sin(from.lat * rad) * Math.cos(d) + Math.cos(from.lat * rad) * Math.sin(d) * Math.cos(bearing * rad));
  const y = Math.sin(bearing * rad) * Math.sin(d) * Math.cos(from.lat * rad);
  const x = Math.cos(d) - Math.sin(from.lat * rad) * Math.sin(lat);
  return { lat: lat / rad, lon: from.lon + Math.atan2(y, x) / rad };
}

/** Initial bearing from a to b, 0 to 360 degrees. */
export function bearing(a, b) {
  const y = Math.sin((b.lon - a.lon) * rad) * Math.cos(b.lat * rad);
  const x = Math.cos(a.lat * rad) * Math.sin(b.lat * rad) - Math.sin(a.lat * rad) * Math.cos(b.lat * rad) * Math.cos((b.lon - a.lon) * rad);
  return (Math.atan2(y, x) / rad + 360) % 360;
}

/** The great circle from a to b as [lat, lon] pairs, a point every 50 km or so. */
export function greatCircle(a, b) {
  const km = distance(a, b);
  const steps = Math.max(1, Math.ceil(km / 50));
  const direction = bearing(a, b);
  return Array.from({ length: steps + 1 }, (_, i) => {
    const place = destination(a, direction, (km * i) / steps);
    return [place.lat, place.lon];
  });
}

/** "lat,lon" in decimal degrees as a position, or null. */
export function parsePosition(text) {
  const parts = /^\s*([+-]?\d+(?:\.\d+)?)\s*,\s*([+-]?\d+(?:\.\d+)?)\s*$/.exec(text ?? '');
  const place = parts && { lat: Number(parts[1]), lon: Number(parts[2]) };
  return place && Math.abs(place.lat) <= 90 && Math.abs(place.lon) <= 180 ? place : null;
}
