// Peer: Perspective's engine (WebAssembly) in node, packages in $PEERS_BUILD. It paints nothing: a figure ends with the read
// of the 43 rows that a view would show. Ticks go in as Arrow buffers, its fastest input.
const fs = require('fs'), path = require('path'), {pathToFileURL} = require('url');
const {createRequire} = require('module');
const W = require('../common/workload.js');
const build = process.env.PEERS_BUILD, arrow = createRequire(build + '/node.js')('apache-arrow');
const sizes = process.env.SIZES.split(' ').map(Number), repeats = +process.env.REPEATS, mostSeconds = 5;
const peer = 'perspective', print = object => console.log(JSON.stringify(object));

const schema = {id: 'integer', sym: 'string', exch: 'string'};
for (let i = 0; i < 14; i++) schema['d' + i] = 'float';
for (let i = 0; i < 3; i++) schema['n' + i] = 'integer';
schema.date = 'string';
const names = Object.keys(schema), columns = names.filter(name => name !== 'id');
const visible = {start_row: 0, end_row: 43};

const now = () => performance.now() / 1000;
const cpu = () => {
    const used = process.cpuUsage();
    return (used.user + used.system) / 1e6;
};
const resident = () => {
    global.gc?.();
    return process.memoryUsage.rss();
};
async function timed(work) {
    const wall = now(), used = cpu();
    const scale = await work() ?? 1;
    return {wall: (now() - wall) * scale, cpu: (cpu() - used) * scale};
}
function expect(condition, what) {
    if (!condition) throw new Error(what);
}
const byColumn = rows => Object.fromEntries(names.map(name => [name, rows.map(row => row[name])]));

class Bench {
    constructor(perspective, rows) {
        this.perspective = perspective;
        this.rows = rows;
        this.repeat = 0;
    }
    report(w, variant, count, samples) {
        console.log(W.reportLine({peer, w, rows: this.rows, variant}, count, samples));
    }
    value(variant, bytes) {
        print({peer, w: 'W5', rows: this.rows, variant, value: bytes / this.rows, unit: 'B/row'});
    }

    async run() {
        await this.memory();
        await this.ticks('W1', 'flat view, viewport read <=1/200ms', {columns}, () => true);
        await this.ticks('W1b', '50% of ticks flip, viewport read <=1/200ms', {columns, filter: [['d0', '>', 500]]},
                         value => value > 500);
        await this.filters();
        await this.sorts();
        if (this.rows === 100000) await this.churn();
        await this.table.delete();
    }

    async memory() {
        const before = resident();
        this.table = await this.perspective.table(schema, {index: 'id'});
        let all = W.makeRows(this.rows);
        all.forEach((row, i) => row.id = i);
        this.d0 = all.map(row => row.d0);
        for (let at = 0; at < this.rows; at += 50000) await this.table.update(byColumn(all.slice(at, at + 50000)));
        all = null;
        await this.table.size();
        const filled = resident();
        this.value('table (process RSS growth)', filled - before);
        const view = await this.table.view({columns});
        await view.to_columns(visible);
        this.value('added by one flat view', resident() - filled);
        await view.delete();
    }

    // Ends with the check that the view shows the values of the last ticks.
    async ticks(w, variant, config, shows) {
        const view = await this.table.view(config), samples = [];
        for (let i = 0; i < repeats; i++) samples.push(await timed(() => this.tickOnce(view)));
        this.report(w, variant, 1e6, samples);
        const shown = (await view.to_columns()).d0, expected = this.d0.filter(shows);
        expect(shown.length === expected.length && shown.every((value, i) => value === expected[i]), w + ': wrong cells');
        await view.delete();
    }

    async tickOnce(view) {
        const draw = W.random(W.operationSeed + this.repeat++), tick = {}, total = 1e6, batch = 1000, start = now();
        let done = 0, lastRead = start;
        while (done < total && now() - start < mostSeconds) {
            const update = {id: new Int32Array(batch), d0: new Float64Array(batch), d5: new Float64Array(batch),
                            n0: new Int32Array(batch)};
            for (let i = 0; i < batch; i++) {
                W.nextTick(draw, this.rows, tick);
                update.id[i] = tick.row;
                this.d0[tick.row] = update.d0[i] = tick.d0;
                update.d5[i] = tick.d5;
                update.n0[i] = tick.n0;
            }
            await this.table.update(arrow.tableToIPC(arrow.tableFromArrays(update), 'stream').slice().buffer);
            done += batch;
            if (now() - lastRead < 0.2) continue;
            await view.to_columns(visible);
            lastRead = now();
        }
        await view.to_columns(visible);
        return total / done;
    }

    // A new view for each repeat: that is how this engine filters and sorts.
    async views(w, variant, config, check) {
        const samples = [];
        for (let i = 0, used = 0; i < repeats && used < 30; i++) {
            let view;
            samples.push(await timed(async () => {
                view = await this.table.view({columns, ...config});
                await view.to_columns(visible);
            }));
            used += samples[i].wall;
            if (i === 0) await check(view);
            await view.delete();
        }
        this.report(w, variant, 0, samples);
    }

    async filters() {
        const view = await this.table.view({columns: ['sym', 'd0']}), all = await view.to_columns();
        await view.delete();
        const kinds = [
            ['prefix SYM0001', ['sym', 'begins with', 'SYM0001'], all.sym.filter(text => text.startsWith('SYM0001'))],
            ['contains 99', ['sym', 'contains', '99'], all.sym.filter(text => text.includes('99'))],
            ['d0 > 500', ['d0', '>', 500], all.d0.filter(value => value > 500)]
        ];
        for (const [variant, filter, expected] of kinds) {
            await this.views('W2', variant, {filter: [filter]}, async made => {
                expect(await made.num_rows() === expected.length, 'W2: the count is wrong');
            });
        }
    }

    async sorts() {
        for (const [column, variant] of [['d1', 'double'], ['n0', 'integer'], ['sym', 'text plain']]) {
            await this.views('W3', variant, {sort: [[column, 'asc']]}, async made => {
                const values = (await made.to_columns())[column];
                expect(values.every((value, i) => i === 0 || values[i - 1] <= value), 'W3: rows out of order');
            });
        }
    }

    async churn() {
        const view = await this.table.view({columns}), samples = [];
        let next = this.rows, ids = Array.from({length: this.rows}, (_, i) => i);
        for (let i = 0; i < repeats; i++) {
            const draw = W.random(W.operationSeed + i), leaving = W.chooseLeaving(ids.length, draw);
            const remove = [...leaving].map(at => ids[at]);
            const coming = remove.map(() => ({...W.makeRow(next, draw), id: next++}));
            const update = byColumn(coming);
            samples.push(await timed(async () => {
                await this.table.remove(remove);
                await this.table.update(update);
                await view.to_columns(visible);
            }));
            ids = ids.filter((_, at) => !leaving.has(at)).concat(update.id);
            expect(await view.num_rows() === this.rows, 'W4: the count is wrong');
        }
        this.report('W4', 'remove(10k) + update(10k new); no selection in the engine', 0, samples);
        await view.delete();
    }
}

async function main() {
    const module = path.join(build, 'node_modules/@perspective-dev/client/dist/esm/perspective.node.js');
    const imported = await import(pathToFileURL(module)), perspective = imported.default ?? imported;
    const {version} = JSON.parse(fs.readFileSync(path.join(build, 'node_modules/@perspective-dev/client/package.json')));
    print({peer, version: `${version}, node ${process.version}`});
    for (const rows of sizes) await new Bench(perspective, rows).run();
}
main().then(() => process.exit(0), error => {
    print({peer, error: String(error?.stack ?? error).slice(0, 300)});
    process.exit(1);
});
