// Decodes LAZ files with a decoder that is not ours, and compares the points with LAS files:
//   node laz_independent.mjs FILE.las FILE.laz [FILE.las FILE.laz]...
// The decoder is the npm package laz-perf, where node finds it from the folder QRB_NODE_MODULES or
// from here; without it the exit code is 77.
import fs from 'node:fs';
import {createRequire} from 'node:module';

let createLazPerf;
try {
    const folder = process.env.QRB_NODE_MODULES;
    const require = createRequire(folder ? folder + '/' : import.meta.url);
    ({createLazPerf} = require('laz-perf'));
} catch {
    console.log('laz-perf is not installed: nothing was compared');
    process.exit(77);
}

const lazPerf = await createLazPerf();

function compare(lasName, lazName) {
    const las = fs.readFileSync(lasName);
    const laz = fs.readFileSync(lazName);
    const length = las.readUInt16LE(105);
    const points = las.readUInt32LE(96);
    const count = Number(las.readBigUInt64LE(247));
    const file = lazPerf._malloc(laz.length);
    const point = lazPerf._malloc(length);
    lazPerf.HEAPU8.set(laz, file);
    const decoder = new lazPerf.LASZip();
    decoder.open(file, laz.length);
    if (decoder.getCount() !== count || decoder.getPointLength() !== length)
        throw new Error(
            `${lazName}: ${decoder.getCount()} points of ${decoder.getPointLength()} bytes`);
    const begin = process.hrtime.bigint();
    for (let i = 0; i < count; ++i) {
        decoder.getPoint(point);
        const expected = las.subarray(points + i * length, points + (i + 1) * length);
        if (expected.compare(lazPerf.HEAPU8, point, point + length) !== 0)
            throw new Error(`${lazName}: point ${i} differs`);
    }
    const seconds = Number(process.hrtime.bigint() - begin) / 1e9;
    decoder.delete();
    lazPerf._free(point);
    lazPerf._free(file);
    console.log(
        `${lazName}: ${count} points are the same, ${(count / seconds / 1e6).toFixed(2)} M/s`);
}

const names = process.argv.slice(2);
for (let i = 0; i < names.length; i += 2)
    compare(names[i], names[i + 1]);
