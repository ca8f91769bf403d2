// node read_scores.mjs PROGRAM FOLDER: exports the melodies of a folder, and random ones, with the
// program and reads them with verovio. See tools/read_scores.

import { execFileSync } from 'node:child_process';
import { mkdtempSync, readdirSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import createVerovioModule from 'verovio/wasm';
import { VerovioToolkit } from 'verovio/esm';

const kRandomMelodies = 150;
const kMetres = ['2/4', '3/4', '4/4', '6/8'];
const kTolerance = 0.01; // quarter notes; the reader counts in floating point

const [program, examples] = process.argv.slice(2);
const folder = mkdtempSync(join(tmpdir(), 'scores-'));
const warnings = [];
const toolkit = new VerovioToolkit(await createVerovioModule());
// The reader's words go to the console, by one of these.
for (const level of ['info', 'warn', 'error'])
    console[level] = (...words) => warnings.push(words.join(' '));
toolkit.loadData('no score');
if (warnings.length === 0) {
    console.log('The warnings of the reader are not heard.');
    process.exit(1);
}

let seed = 20;
function draw(below) {
    seed = (seed * 1103515245 + 12345) % 2147483648;
    return Math.floor((seed / 2147483648) * below);
}

function randomMelody(file) {
    const notes = [], durations = [], letters = [];
    const add = (note, duration) => {
        notes.push(note || '00');
        durations.push(String(Number(duration.toPrecision(15))));
        letters.push(note ? 'nsta'[draw(4)] : 'p');
    };
    for (let left = 1 + draw(40); left > 0; --left) {
        const note = () => (draw(6) === 0 ? 0 : 36 + draw(60));
        const value = 4 / 2 ** draw(7);
        const kind = draw(6);
        if (kind === 0)
            for (let i = 0; i < 3; ++i)
                add(note(), (value * 2) / 3);
        else
            add(note(), kind === 1 && value > 0.0625 ? value * 1.5 : kind === 2 ? value + 4 : value);
    }
    writeFileSync(file, [notes, durations, letters].map((row) => row.join(';') + ';\r\n').join('') +
        ` ${20 + draw(231)} \r\n ${draw(128)} \r\n`, 'latin1');
}

// "60@1.5" for each note and its onset in quarter notes, as the melody's file has them.
function melodyNotes(file) {
    const [notes, durations] = readFileSync(file, 'latin1').split('\r\n')
        .map((row) => row.split(';').slice(0, -1));
    let now = 0;
    const found = [];
    notes.forEach((note, i) => {
        if (Number(note) > 0)
            found.push({ note: Number(note), onset: now });
        now += Number(durations[i].replace(',', '.'));
    });
    return found;
}

// The same as the reader has them; what is tied to a note before does not begin.
function scoreNotes() {
    const tied = new Set();
    for (const [tie] of toolkit.getMEI().matchAll(/<tie [^>]*>/g))
        tied.add(/endid="#([^"]*)"/.exec(tie)?.[1]);
    const found = [];
    for (const event of toolkit.renderToTimemap()) {
        for (const id of (event.on ?? []).filter((id) => !tied.has(id)))
            found.push({ note: toolkit.getMIDIValuesForElement(id).pitch, onset: event.qstamp });
    }
    return found;
}

function faultOf(melody, score) {
    warnings.length = 0;
    if (!toolkit.loadData(readFileSync(score, 'utf8')))
        return 'it is not read';
    const read = scoreNotes();
    if (warnings.length > 0)
        return warnings.join('; ');
    const wanted = melodyNotes(melody);
    if (read.length !== wanted.length)
        return `${read.length} notes instead of ${wanted.length}`;
    const wrong = wanted.findIndex((note, i) => note.note !== read[i].note ||
        Math.abs(note.onset - read[i].onset) > kTolerance);
    return wrong < 0 ? '' : `note ${wrong + 1}: ${JSON.stringify(read[wrong])} instead of ` +
        JSON.stringify(wanted[wrong]);
}

const melodies = readdirSync(examples).filter((name) => name.endsWith('.mel'))
    .map((name) => join(examples, name));
for (let i = 0; i < kRandomMelodies; ++i) {
    melodies.push(join(folder, `${i}.mel`));
    randomMelody(melodies.at(-1));
}
let read = 0, refused = 0, faults = 0;
for (const melody of melodies) {
    const score = join(folder, 'score.musicxml');
    const key = String(draw(15) - 7) + ['', 'm'][draw(2)];
    const metre = kMetres[draw(kMetres.length)];
    try {
        execFileSync(program, ['--export-musicxml', melody, '-o', score, '--metre', metre, '--key',
            key], { stdio: 'pipe' });
    } catch (error) {
        // What no values give is refused; anything else is a fault.
        if (!String(error.stderr).includes('Nessun valore')) {
            console.log(`${melody}: ${error.stderr}`);
            ++faults;
        }
        ++refused;
        continue;
    }
    ++read;
    const fault = faultOf(melody, score);
    if (fault) {
        console.log(`${melody} in ${metre}, key ${key}: ${fault}`);
        ++faults;
    }
}
rmSync(folder, { recursive: true });
console.log(`${read} scores read, ${refused} melodies not written, ${faults} faults`);
process.exit(faults > 0 || read < kRandomMelodies / 2 ? 1 : 0);
