
(() => {
  'use strict';
  const data = JSON.parse(document.getElementById('data').textContent);
  const rowsOfPage = 50;
  const sureties = ['sure', 'likely', 'unsure'];
  const number = new Intl.NumberFormat('en-US');
  const compare = new Intl.Collator('en', { numeric: true }).compare;

  // Characters that steer a terminal or the direction of writing, and halves of pairs, are shown as
  // such: names come from other computers.
  const steering = /[\u0000-\u001f\u007f-\u009f\u061c\u200e\u200f\u2028-\u202e\u2066-\u2069\ufeff]|[\ud800-\udfff]/gu;
  const shown = (text) => String(text).replace(steering, '\ufffd');

  // Texts become text nodes alone, so that nothing in them is ever markup.
  const make = (tag, properties, ...content) => {
    const element = document.createElement(tag);
    for (const [name, value] of Object.entries(properties || {})) {
      if (value !== null) element.setAttribute(name, value);
    }
    element.append(...content);
    return element;
  };
  const plural = (count, one, many) => `${number.format(count)} ${count === 1 ? one : many}`;
  const spoken = (counts) => counts.map((count, at) => `${number.format(count)} ${sureties[at]}`).join(', ');

  // A path may be broken behind each of its parts.
  const breakable = (text) => shown(text).split('\\').flatMap((part, at) => (at === 0 ? [part] : ['\\', make('wbr'), part]));

  // What a reader looks for in a path is its end.
  const pathText = (text, below) => {
    const whole = shown(text);
    const cut = whole.lastIndexOf('\\') + 1;
    const name = cut > 0 && cut < whole.length ? whole.slice(cut) : whole;
    const folder = name === whole ? '' : whole.slice(0, cut);
    const parts = [make('div', { class: 'name', dir: 'ltr' }, ...breakable(name))];
    if (folder) parts.push(make('div', { class: 'path', dir: 'ltr' }, ...breakable(folder)));
    if (below) parts.push(make('div', { class: 'path', dir: 'ltr' }, ...breakable(below)));
    return parts;
  };

  // ---- Charts: each is a table whose last column is drawn, so that its text alternative is itself.

  const bar = (parts, most) => {
    const drawn = make('div', { class: 'bar', 'aria-hidden': 'true' });
    for (const [count, kind, title] of parts) {
      if (count > 0) {
        const part = make('i', { class: `of-${kind}`, title });
        part.style.width = `${(100 * count) / most}%`;
        drawn.append(part);
      }
    }
    return make('div', { class: 'track' }, drawn);
  };

  const legend = () => make('ul', { class: 'legend', 'aria-hidden': 'true' },
    ...sureties.map((name) => make('li', { class: `of-${name}` }, name)));

  const chart = ({ title, text, headings, rows, shape, withLegend }) => {
    const id = `chart-${document.querySelectorAll('.chart').length + 1}`;
    const head = make('tr', {}, ...headings.map((name) => make('th', { scope: 'col' }, name)));
    const body = make('tbody', {}, ...rows.map(({ label, value, parts, most, aloud }) => make('tr', {},
      make('th', { scope: 'row' }, ...label),
      make('td', { class: 'number' }, value),
      make('td', { class: 'bars' }, ...(aloud ? [make('span', { class: 'unseen' }, aloud)] : []), bar(parts, most)))));
    const panel = make('section', { class: `panel ${shape}`, 'aria-labelledby': id },
      make('h2', { id }, title));
    if (text) panel.append(make('p', { class: 'muted' }, text));
    if (withLegend) panel.append(legend());
    panel.append(make('table', { class: 'chart', 'aria-labelledby': id },
      make('thead', { class: 'unseen' }, head), body));
    document.getElementById('charts').append(panel);
  };

  const partsOf = (counts) => counts.map((count, at) => [count, sureties[at], `${number.format(count)} ${sureties[at]}`]);
  const sum = (counts) => counts.reduce((total, count) => total + count, 0);

  const drawCharts = () => {
    const categories = data.categories.map(([name, computers, ...counts]) => ({ name, computers, counts, findings: sum(counts) }))
      .sort((left, right) => right.findings - left.findings || compare(left.name, right.name));
    const mostOfCategory = Math.max(1, ...categories.map((one) => one.findings));
    chart({
      title: 'Findings by category', headings: ['Category', 'Findings', 'How sure'], shape: 'high', withLegend: true,
      rows: categories.map((one) => ({
        label: [shown(one.name)], value: number.format(one.findings), parts: partsOf(one.counts), most: mostOfCategory,
        aloud: `${spoken(one.counts)}, on ${plural(one.computers, 'computer', 'computers')}`,
      })),
    });

    const all = Math.max(1, sum(data.confidence));
    const meanings = ['nothing is found where it points', 'gone by every way that was tried, but there is a doubt',
      'found after all, or not to be decided'];
    chart({
      title: 'How sure the findings are', headings: ['How sure', 'Findings', 'Share'], shape: '',
      rows: data.confidence.map((count, at) => ({
        label: [make('div', {}, sureties[at]), make('div', { class: 'path' }, meanings[at])],
        value: number.format(count), parts: [[count, sureties[at], '']], most: all,
        aloud: `${Math.round((100 * count) / all)} percent`,
      })),
    });

    if (data.totals.computers > 1) {
      const most = Math.max(1, ...data.sizes.map(([, count]) => count));
      chart({
        title: 'Computers by number of findings', headings: ['Findings', 'Computers', 'Bar'], shape: 'brief',
        rows: data.sizes.map(([label, count]) => ({
          label: [label === '0' ? 'none' : label], value: number.format(count), parts: [[count, 'plain', '']], most,
        })),
      });
    }

    if (data.references.length > 0) {
      const isOne = data.totals.computers < 2;
      const top = data.references.slice(0, 12);
      const at = isOne ? 3 : 2;
      const most = isOne ? Math.max(...top.map((row) => row[at])) : data.totals.computers;
      chart({
        title: isOne ? 'References found most often' : 'Dead on most computers', shape: 'wide',
        text: isOne ? null : `The whole width is all ${number.format(most)} computers.`,
        headings: ['Reference', isOne ? 'Findings' : 'Computers', 'Share'],
        rows: top.map((row) => ({
          label: pathText(row[1]), parts: [[row[at], 'plain', '']], most,
          value: isOne ? number.format(row[at]) : `${number.format(row[at])} (${Math.round((100 * row[at]) / most)}%)`,
        })),
      });
    }

    if (data.reasons.length > 0) {
      const most = Math.max(...data.reasons.map(([, count]) => count));
      chart({
        title: 'What failed, and why', headings: ['Why', 'Computers or files', 'Bar'], shape: 'wide',
        rows: data.reasons.map(([why, count]) => ({
          label: [shown(why)], value: number.format(count), parts: [[count, 'failed', '']], most,
        })),
      });
    }
  };

  // ---- Tables that sort and filter. Only the rows of one page are in the document.

  const table = ({ id, title, caption, note, columns, rows, sortedBy, choices = [], placeholder }) => {
    let order = { column: sortedBy, isDown: columns[sortedBy].isNumber === true };
    let page = 0;
    let matching = rows;
    let words = null;  // what the filter looks at, made when it is first used

    const status = make('p', { role: 'status', class: 'muted' });
    const body = make('tbody');
    const headings = columns.map((column, at) => {
      const button = make('button', { type: 'button' }, column.title);
      button.addEventListener('click', () => {
        order = { column: at, isDown: order.column === at ? !order.isDown : column.isNumber === true };
        page = 0;
        arrange();
      });
      return make('th', { scope: 'col', class: column.isNumber ? 'number' : null }, button);
    });
    const search = make('input', { type: 'search', id: `${id}-search`, placeholder: placeholder || null });
    const selects = choices.map(({ label, options, fits }) => {
      const select = make('select', {}, make('option', { value: '' }, 'all'),
        ...options.map((option, at) => make('option', { value: String(at) }, shown(option))));
      return { label, select, fits };
    });
    const back = make('button', { type: 'button' }, 'Previous');
    const next = make('button', { type: 'button' }, 'Next');
    const where = make('span', { class: 'muted' });

    const show = () => {
      const first = page * rowsOfPage;
      body.replaceChildren(...matching.slice(first, first + rowsOfPage).map((row) => make('tr', {},
        ...columns.map((column, at) => {
          const content = column.content ? column.content(row) : [shown(column.isNumber ? number.format(column.value(row)) : column.value(row))];
          return at === 0 ? make('th', { scope: 'row' }, ...content)
            : make('td', { class: column.isNumber ? 'number' : null }, ...content);
        }))));
      const pages = Math.max(1, Math.ceil(matching.length / rowsOfPage));
      where.textContent = `Page ${number.format(page + 1)} of ${number.format(pages)}`;
      back.disabled = page === 0;
      next.disabled = page + 1 >= pages;
    };
    const arrange = () => {
      const text = search.value.trim().toLowerCase();
      if (text) words ??= rows.map((row) => columns.map((column) => shown(column.words ? column.words(row) : column.value(row))).join('\n').toLowerCase());
      matching = rows.filter((row, at) => (!text || words[at].includes(text)) &&
        selects.every(({ select, fits }) => select.value === '' || fits(row, Number(select.value))));
      const column = columns[order.column];
      const sign = order.isDown ? -1 : 1;
      matching.sort((left, right) => {
        const one = column.value(left);
        const other = column.value(right);
        return sign * (column.isNumber ? one - other : compare(one, other));
      });
      headings.forEach((heading, at) => {
        if (at === order.column) heading.setAttribute('aria-sort', order.isDown ? 'descending' : 'ascending');
        else heading.removeAttribute('aria-sort');
      });
      status.textContent = matching.length === rows.length ? plural(rows.length, 'row', 'rows')
        : `${number.format(matching.length)} of ${plural(rows.length, 'row', 'rows')}`;
      show();
    };
    const turn = (step) => {
      page += step;
      show();
    };
    back.addEventListener('click', () => turn(-1));
    next.addEventListener('click', () => turn(1));
    for (const field of [search, ...selects.map((one) => one.select)]) {
      field.addEventListener('input', () => {
        page = 0;
        arrange();
      });
    }

    const section = make('section', { class: 'panel rows', 'aria-labelledby': id }, make('h2', { id }, title));
    if (note) section.append(make('p', { class: 'note' }, note));
    section.append(make('div', { class: 'tools' }, make('label', { for: search.id }, 'Filter', search),
      ...selects.map(({ label, select }) => make('label', {}, label, select))), status,
    make('div', { class: 'scroll', role: 'region', tabindex: '0', 'aria-labelledby': id },
      make('table', { id: `${id}-table` }, make('caption', {}, caption), make('thead', {}, make('tr', {}, ...headings)), body)));
    if (rows.length > rowsOfPage) section.append(make('div', { class: 'pager' }, back, next, where));
    document.getElementById('tables').append(section);
    arrange();
  };

  const cutNote = (shownRows, total, kind, rest) => (shownRows < total
    ? `This page holds ${number.format(shownRows)} of ${number.format(total)} ${kind}. ${rest}` : null);

  const drawTables = () => {
    const names = data.categories.map(([name]) => name);
    const isOne = data.totals.computers < 2;
    table({
      id: 'references', title: 'References', placeholder: 'part of a path or a key', sortedBy: 2,
      caption: isOne ? 'What is dead, and a key in which it stands' : 'What is dead on how many computers, and a key in which it stands on one of them',
      note: cutNote(data.references.length, data.totals.references, 'references, those on most computers',
        data.csv ? `All are in ${shown(data.csv)}.` : 'All are in what --csv FILE writes.') ||
        (data.leavesOut ? 'There were so many different references that some of those on the fewest computers were left out.' : null),
      choices: [
        { label: 'Category', options: names, fits: (row, at) => row[0] === at },
        { label: 'How sure', options: sureties, fits: (row, at) => row[4 + at] > 0 }],
      columns: [
        { title: 'Reference', value: (row) => row[1], words: (row) => `${row[1]}\n${row[7]}`, content: (row) => pathText(row[1], row[7]) },
        { title: 'Category', value: (row) => names[row[0]] },
        { title: 'Computers', value: (row) => row[2], isNumber: true },
        { title: 'Findings', value: (row) => row[3], isNumber: true },
        ...sureties.map((name, at) => ({ title: name, value: (row) => row[4 + at], isNumber: true }))],
      rows: data.references,
    });
    table({
      id: 'computers', title: 'Computers', placeholder: 'part of a name or a system', sortedBy: 3,
      caption: 'What was found on each computer, and what hindered the scan',
      note: cutNote(data.computers.length, data.totals.computers, 'computers, those with most findings', 'All are in what --json FILE writes.'),
      columns: [
        { title: 'Computer', value: (row) => row[0], content: (row) => [make('div', { class: 'name' }, shown(row[0]) || '(no name)')] },
        { title: 'System', value: (row) => row[1] },
        { title: 'Scanned', value: (row) => row[2].replace('T', ' ').replace('Z', '') },
        { title: 'Findings', value: (row) => sum(row[3]), isNumber: true },
        ...sureties.map((name, at) => ({ title: name, value: (row) => row[3][at], isNumber: true })),
        ...(data.computers.some((row) => row[4] > 0) ? [{ title: 'Repaired', value: (row) => row[4], isNumber: true }] : []),
        { title: 'Remarks', value: (row) => (row[5] ? '' : 'incomplete: ') + row[6].join('; '),
          content: (row) => [make('div', { class: 'name' }, shown((row[5] ? '' : 'incomplete') + (row[5] || row[6].length === 0 ? '' : ': ') + row[6].join('; ')))] }],
      rows: data.computers,
    });
    if (data.failed.length > 0) {
      table({
        id: 'failures', title: 'Failures', placeholder: 'part of a name or a reason', sortedBy: 0,
        caption: 'Computers without a result, and files that are none',
        note: cutNote(data.failed.length, data.totals.failed, 'failures', 'All are in what --json FILE writes.'),
        columns: [{ title: 'File', value: (row) => row[0] }, { title: 'Why', value: (row) => row[1] }],
        rows: data.failed,
      });
    }
  };

  for (const choice of document.querySelectorAll('input[name="theme"]')) {
    choice.addEventListener('change', () => {
      if (choice.value) document.documentElement.dataset.theme = choice.value;
      else delete document.documentElement.dataset.theme;
    });
  }
  if (data.totals.computers === 1 && data.computers[0][0] !== '') {
    document.title = `Dead registry references on ${shown(data.computers[0][0])}`;
    document.querySelector('h1').textContent = document.title;
  }
  document.documentElement.classList.add('scripted');
  drawCharts();
  drawTables();
})();
