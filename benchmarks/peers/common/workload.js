// Workload W in JavaScript: the same draws in the same order as workload.h. In a page it is the global `W`, in node a module.
(function(root) {
    function random(seed) {
        let x = seed | 0;
        return () => {
            x ^= x << 13;
            x ^= x >>> 17;
            x ^= x << 5;
            return x >>> 0;
        };
    }
    const exchanges = ['NYSE', 'NSDQ', 'LSE', 'XETR', 'TSE'];
    const twoDigits = value => String(value).padStart(2, '0');
    const cents = draw => (draw() % 100000) / 100;

    function makeRow(symbolNumber, draw) {
        const row = {sym: 'SYM' + String(symbolNumber).padStart(6, '0'), exch: exchanges[draw() % 5]};
        for (let i = 0; i < 14; i++) row['d' + i] = cents(draw);
        row.n0 = draw() % 1000000;
        row.n1 = draw() % 10000;
        row.n2 = draw() % 10000;
        const day = 1 + draw() % 28, month = 1 + draw() % 12, year = 2020 + draw() % 6;
        row.date = year + '-' + twoDigits(month) + '-' + twoDigits(day);
        return row;
    }

    function symbolOrder(count) {
        const order = Uint32Array.from({length: count}, (_, i) => i), draw = random(7);
        for (let i = count - 1; i > 0; i--) {
            const j = draw() % (i + 1);
            [order[i], order[j]] = [order[j], order[i]];
        }
        return order;
    }

    function makeRows(count) {
        const draw = random(42), order = symbolOrder(count), rows = new Array(count);
        for (let i = 0; i < count; i++) rows[i] = makeRow(order[i], draw);
        return rows;
    }

    // `tick` is filled and given back: an object for each of a million ticks would be measured too.
    function nextTick(draw, rows, tick) {
        tick.row = draw() % rows;
        tick.d0 = cents(draw);
        tick.d5 = cents(draw);
        tick.n0 = draw() % 1000000;
        return tick;
    }

    function chooseLeaving(count, draw) {
        const leaving = new Set();
        while (leaving.size < 10000) leaving.add(draw() % count);
        return leaving;
    }

    const sorted = values => values.slice().sort((a, b) => a - b);
    const median = values => sorted(values)[values.length >> 1];
    // The line that clock.h prints; samples are {wall, cpu} in seconds.
    function reportLine(work, count, samples, note = '') {
        const wall = sorted(samples.map(s => s.wall));
        return JSON.stringify({
            ...work, count, reps: samples.length, wall_med: +median(wall).toFixed(6), wall_min: +wall[0].toFixed(6),
            wall_max: +wall[wall.length - 1].toFixed(6), cpu_med: +median(samples.map(s => s.cpu)).toFixed(6), note
        });
    }

    const all = {random, makeRow, makeRows, nextTick, chooseLeaving, median, reportLine, operationSeed: 4242};
    if (typeof module !== 'undefined' && module.exports) module.exports = all;
    else root.W = all;
})(typeof globalThis !== 'undefined' ? globalThis : this);
