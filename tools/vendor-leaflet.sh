#!/usr/bin/env bash
# Vendors Leaflet for the map page from the npm registry into a build folder.
#   tools/vendor-leaflet.sh <folder with package.json + package-lock.json> <output folder>
# Writes <output>/leaflet/{leaflet.js,leaflet.css,images/*}. Installs with `npm ci`
# from the committed lock file; without network it uses npm's cache, and a
# previous install in the output folder is kept when npm cannot reach anything.
set -euo pipefail

src=${1:?usage: vendor-leaflet.sh <package folder> <output folder>}
out=${2:?usage: vendor-leaflet.sh <package folder> <output folder>}
want=1.9.4
work=$out/npm

mkdir -p "$work"
cp "$src/package.json" "$src/package-lock.json" "$work/"
cd "$work"

npm_ci() {
    npm ci --ignore-scripts --no-audit --no-fund --loglevel=error "$@" >/dev/null 2>&1
}
# npm's cache first (fast, works offline), then the registry.
if ! npm_ci --offline && ! npm_ci --prefer-offline --fetch-retries=1; then
    if [ -f node_modules/leaflet/dist/leaflet.js ]; then
        echo "vendor-leaflet: npm unavailable, keeping the earlier install" >&2
    else
        echo "vendor-leaflet: npm ci failed (no network and leaflet@$want not in npm's cache)" >&2
        exit 1
    fi
fi

have=$(node -p "require('./node_modules/leaflet/package.json').version")
if [ "$have" != "$want" ]; then
    echo "vendor-leaflet: expected leaflet $want, npm installed $have" >&2
    exit 1
fi

dist=node_modules/leaflet/dist
mkdir -p "$out/leaflet/images"
cp "$dist/leaflet.js" "$dist/leaflet.css" "$out/leaflet/"
cp "$dist"/images/*.png "$out/leaflet/images/"
touch "$out/leaflet/leaflet.js" "$out/leaflet/leaflet.css" "$out"/leaflet/images/*.png
