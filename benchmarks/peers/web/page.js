// Runs inside the browser: the grid, and one function for each piece of work. Times are wall seconds.
let api, rows, nextId, repeat = 0;
const now = () => performance.now() / 1000;

// A turn of the event loop without the 4 ms of a timer.
const channel = new MessageChannel();
let waiting = [];
channel.port1.onmessage = () => {
    const all = waiting;
    waiting = [];
    for (const go of all) go();
};
const turn = () => new Promise(go => {
    waiting.push(go);
    channel.port2.postMessage(0);
});
const painted = async () => {
    await new Promise(go => requestAnimationFrame(go));
    await turn();
};
async function until(condition) {
    for (const start = now(); !condition();) {
        if (now() - start > 120) throw new Error('not right after 120 s');
        await turn();
    }
}

function makeHostRows(count) {
    rows = W.makeRows(count);
    rows.forEach((row, i) => row.id = String(i));
    nextId = count;
}

async function makeGrid() {
    const host = document.createElement('div');
    host.style.cssText = 'width:1600px;height:900px';
    document.body.style.margin = 0;
    document.body.append(host);
    const text = field => ({field, filter: 'agTextColumnFilter'});
    const number = (field, extra) => ({field, filter: 'agNumberColumnFilter', ...extra});
    const columnDefs = [text('sym'), text('exch')];
    for (let i = 0; i < 14; i++) columnDefs.push(number('d' + i, {valueFormatter: p => p.value.toFixed(2)}));
    for (let i = 0; i < 3; i++) columnDefs.push(number('n' + i));
    columnDefs.push(text('date'));
    await new Promise(ready => {
        api = agGrid.createGrid(host, {
            columnDefs, rowData: rows, getRowId: p => p.data.id, rowHeight: 20, headerHeight: 24, animateRows: false,
            defaultColDef: {width: 76, minWidth: 20, sortable: true, resizable: true, cellDataType: false},
            rowSelection: {mode: 'multiRow', checkboxes: false, headerCheckbox: false}, onFirstDataRendered: ready
        });
    });
    await painted();
    await painted();
}

const shownText = (index, column) =>
    document.querySelector(`.ag-row[row-index="${index}"] [col-id="${column}"]`)?.textContent;

// A million ticks, one asynchronous transaction for each 1,000: the grid merges and paints them every 50 ms.
async function ticks(mostSeconds) {
    const draw = W.random(W.operationSeed + repeat++), tick = {}, total = 1e6, batch = 1000;
    let done = 0, flushed = 0;
    const onFlushed = event => event.results.forEach(result => flushed += result.update.length);
    api.addEventListener('asyncTransactionsFlushed', onFlushed);
    const start = now();
    while (done < total && now() - start < mostSeconds) {
        const update = new Array(batch);
        for (let i = 0; i < batch; i++) {
            W.nextTick(draw, rows.length, tick);
            const row = update[i] = rows[tick.row];
            row.d0 = tick.d0;
            row.d5 = tick.d5;
            row.n0 = tick.n0;
        }
        api.applyTransactionAsync({update});
        done += batch;
        await turn();
    }
    await until(() => flushed >= done);
    await painted();
    const wall = now() - start;
    api.removeEventListener('asyncTransactionsFlushed', onFlushed);
    for (let i = 0; i < Math.min(20, api.getDisplayedRowCount()); i++) {
        if (shownText(i, 'd0') !== api.getDisplayedRowAtIndex(i).data.d0.toFixed(2)) throw new Error('a shown cell is old');
    }
    return {wall, scale: total / done};
}

const filters = {
    none: {model: null, passes: () => true},
    prefix: {
        model: {sym: {filterType: 'text', type: 'startsWith', filter: 'SYM0001'}},
        passes: row => row.sym.startsWith('SYM0001')
    },
    contains: {model: {sym: {filterType: 'text', type: 'contains', filter: '99'}}, passes: row => row.sym.includes('99')},
    greater: {model: {d0: {filterType: 'number', type: 'greaterThan', filter: 500}}, passes: row => row.d0 > 500}
};

// Until the count and the first row's text are right.
async function filter(name) {
    const expected = rows.filter(filters[name].passes);
    await painted();
    const start = now();
    api.setFilterModel(filters[name].model);
    await until(() => api.getDisplayedRowCount() === expected.length && shownText(0, 'sym') === expected[0].sym);
    return {wall: now() - start};
}

function checkFilter(name) {
    if (api.getDisplayedRowCount() !== rows.filter(filters[name].passes).length) throw new Error('the count is wrong');
}

async function sort(column, natural) {
    const compare = natural ? new Intl.Collator('en-US', {numeric: true}).compare : (a, b) => a < b ? -1 : a > b ? 1 : 0;
    const change = def => def.field === column ? {...def, comparator: natural ? compare : undefined} : def;
    api.setGridOption('columnDefs', api.getColumnDefs().map(change));
    api.applyColumnState({defaultState: {sort: null}});
    await painted();
    await painted();
    const least = rows.reduce((a, b) => compare(b[column], a[column]) < 0 ? b : a)[column];
    const text = column[0] === 'd' ? least.toFixed(2) : String(least);
    const start = now();
    api.applyColumnState({state: [{colId: column, sort: 'asc'}], defaultState: {sort: null}});
    await until(() => shownText(0, column) === text && api.getDisplayedRowAtIndex(0).data[column] === least);
    const wall = now() - start;
    for (let i = 1; i < rows.length; i++) {
        const pair = [i - 1, i].map(at => api.getDisplayedRowAtIndex(at).data[column]);
        if (compare(...pair) > 0) throw new Error('rows out of order');
    }
    return {wall};
}

async function churn() {
    api.applyColumnState({defaultState: {sort: null}});
    api.deselectAll();
    const nodes = Array.from({length: 100}, (_, i) => api.getDisplayedRowAtIndex(i * (rows.length / 100) + rows.length / 200));
    api.setNodesSelected({nodes, newValue: true});
    await painted();
    const draw = W.random(W.operationSeed), leaving = W.chooseLeaving(rows.length, draw);
    const remove = [...leaving].map(i => rows[i]);
    const add = Array.from({length: remove.length}, () => ({...W.makeRow(nextId, draw), id: String(nextId++)}));
    const expected = new Set(nodes.map(node => node.id));
    for (const row of remove) expected.delete(row.id);
    const start = now();
    api.applyTransaction({add, remove});
    const wall = now() - start;
    await painted();
    const selected = api.getSelectedNodes().map(node => node.id);
    const right = selected.length === expected.size && selected.every(id => expected.has(id));
    if (!right || api.getDisplayedRowCount() !== rows.length) throw new Error('count or selection is wrong');
    rows = rows.filter((row, i) => !leaving.has(i)).concat(add);
    return {wall};
}
