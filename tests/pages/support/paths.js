import { fileURLToPath } from 'node:url';

const root = new URL('../../../', import.meta.url);

/** The absolute path of a file of the source tree. */
export function sourcePath(path) {
  return fileURLToPath(new URL(path, root));
}
