// Peer: AG Grid Community in headless Chromium, driven over the debugging protocol. Packages and profile in $PEERS_BUILD.
const fs = require('fs'), path = require('path');
const {spawn} = require('child_process'), {createRequire} = require('module');
const W = require('../common/workload.js');
const build = process.env.PEERS_BUILD, load = createRequire(build + '/node.js');
const {chromium} = load('playwright-core');
const gridFolder = path.join(build, 'node_modules/ag-grid-community');
const sizes = process.env.SIZES.split(' ').map(Number), repeats = +process.env.REPEATS, mostSeconds = 5;
const peer = 'ag-grid', print = object => console.log(JSON.stringify(object));

// CPU seconds of a process and all below it.
function cpuSeconds(root) {
    const children = {};
    for (const entry of fs.readdirSync('/proc').filter(name => /^\d+$/.test(name))) {
        try {
            const stat = fs.readFileSync(`/proc/${entry}/stat`, 'utf8');
            const fields = stat.slice(stat.lastIndexOf(')') + 2).split(' ');
            (children[fields[1]] ??= []).push({pid: entry, seconds: (+fields[11] + +fields[12]) / 100});
        } catch {
            // it ended meanwhile
        }
    }
    const sum = pid => (children[pid] ?? []).reduce((all, child) => all + child.seconds + sum(child.pid), 0);
    return sum(root);
}

function startBrowser(profile) {
    const flags = [
        '--headless', '--no-sandbox', '--disable-gpu', '--no-first-run', '--disable-background-networking',
        '--disable-component-update', '--disable-sync', '--disable-renderer-backgrounding',
        '--disable-background-timer-throttling', '--disable-dev-shm-usage', '--host-resolver-rules=MAP * ~NOTFOUND',
        '--js-flags=--max-old-space-size=8192', '--window-size=1620,940', '--remote-debugging-port=0',
        '--user-data-dir=' + profile, 'about:blank'
    ];
    const browser = spawn('chromium', flags, {stdio: ['ignore', 'ignore', 'pipe']});
    const address = new Promise((found, failed) => {
        let text = '';
        browser.stderr.on('data', part => {
            text += part;
            const match = text.match(/ws:\/\/\S+/);
            if (match) found(match[0]);
        });
        browser.on('exit', () => failed(new Error(text)));
        browser.on('error', failed);
    });
    return {browser, address};
}

async function measureSize(page, rows, cpu) {
    const report = (w, variant, count, samples) => console.log(W.reportLine({peer, w, rows, variant}, count, samples));
    const protocol = await page.context().newCDPSession(page);
    const heap = async () => {
        for (let i = 0; i < 2; i++) await protocol.send('HeapProfiler.collectGarbage');
        return (await protocol.send('Runtime.getHeapUsage')).usedSize;
    };
    const value = (variant, bytes) => print({peer, w: 'W5', rows, variant, value: bytes / rows, unit: 'B/row'});
    const timed = async call => {
        const before = cpu(), result = await page.evaluate(call), scale = result.scale ?? 1;
        return {wall: result.wall * scale, cpu: (cpu() - before) * scale};
    };
    const repeated = async (call, undo) => {
        const samples = [];
        for (let i = 0, used = 0; i < repeats && used < 40; i++) {
            if (undo) await page.evaluate(undo);
            samples.push(await timed(call));
            used += samples[i].wall;
        }
        return samples;
    };

    const empty = await heap();
    await page.evaluate(`makeHostRows(${rows})`);
    const hosted = await heap();
    await page.evaluate('makeGrid()');
    value('host row objects (JS heap after GC)', hosted - empty);
    value('added by grid (JS heap after GC)', await heap() - hosted);
    const ticks = `ticks(${mostSeconds})`;
    report('W1', 'applyTransactionAsync, 1 call per 1,000, default 50 ms batching', 1e6, await repeated(ticks));
    await page.evaluate('filter("greater")');
    report('W1b', '50% of ticks flip, async 1 call per 1,000', 1e6, await repeated(ticks));
    await page.evaluate('checkFilter("greater")');
    for (const [name, variant] of [['prefix', 'prefix SYM0001'], ['contains', 'contains 99'], ['greater', 'd0 > 500']])
        report('W2', variant, 0, await repeated(`filter("${name}")`, 'filter("none")'));
    await page.evaluate('filter("none")');
    for (const [column, natural, variant] of [['d1', false, 'double'], ['n0', false, 'integer'],
                                              ['sym', false, 'text plain'], ['sym', true, 'text natural']])
        report('W3', variant, 0, await repeated(`sort("${column}", ${natural})`));
    if (rows === 100000) report('W4', 'applyTransaction({add,remove})', 0, await repeated('churn()'));
}

async function main() {
    const profile = fs.mkdtempSync(path.join(build, 'chromium-'));
    const {browser, address} = startBrowser(profile);
    process.on('exit', () => browser.kill());  // whatever ends this program
    let failed = 0;
    try {
        const connection = await chromium.connectOverCDP(await address);
        const {version} = JSON.parse(fs.readFileSync(path.join(gridFolder, 'package.json')));
        print({peer, version: `${version}, Chromium ${connection.version()}`});
        for (const rows of sizes) {
            const page = await connection.contexts()[0].newPage();
            await page.setViewportSize({width: 1600, height: 900});
            const scripts = [path.join(__dirname, '../common/workload.js'),
                             path.join(gridFolder, 'dist/ag-grid-community.min.js'), path.join(__dirname, 'page.js')];
            for (const script of scripts) await page.addScriptTag({path: script});
            await measureSize(page, rows, () => cpuSeconds(browser.pid));
            await page.close();
        }
        await connection.close();
    } catch (error) {
        print({peer, error: String(error).slice(0, 300)});
        failed = 1;
    }
    browser.once('exit', () => {
        fs.rmSync(profile, {recursive: true, force: true, maxRetries: 5});
        process.exit(failed);
    });
    browser.kill();
}
main();
