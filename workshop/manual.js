'use strict';
(() => {
  const field = document.getElementById('search');
  const status = document.getElementById('status');
  const links = [...document.querySelectorAll('nav li a')];
  // Every entry of the contents has its article, in the same order.
  const entries = [...document.querySelectorAll('main article')].map((article, i) => ({
    article, link: links[i], item: links[i].parentElement, name: plain(links[i].textContent),
    text: '', shown: true,
  }));
  const groups = [...document.querySelectorAll('[data-group]')];

  function plain(text) {
    return text.normalize('NFKC').toLowerCase();
  }

  // Texts are read when the first search begins.
  function textOf(entry) {
    return entry.text ||= plain(entry.article.textContent);
  }

  function show(entry, shown) {
    if (entry.shown === shown) return;
    entry.shown = shown;
    entry.article.hidden = entry.item.hidden = !shown;
  }

  function filter() {
    const words = plain(field.value).split(/\s+/).filter(Boolean);
    let found = 0;
    for (const entry of entries) {
      const shown = words.every((word) => textOf(entry).includes(word));
      show(entry, shown);
      if (shown) ++found;
    }
    for (const group of groups) {
      group.hidden = words.length > 0 && !group.querySelector('article:not([hidden]), li:not([hidden])');
    }
    status.textContent = words.length === 0 ? '' : found === 0 ? 'Nothing found' : `${found} found`;
  }

  function clear() {
    field.value = '';
    filter();
  }

  // The first command whose name begins with what is typed, then one that has it in its name.
  function best() {
    const typed = plain(field.value.trim());
    const shown = entries.filter((entry) => entry.shown);
    return shown.find((entry) => entry.name.startsWith(typed)) ??
        shown.find((entry) => entry.name.includes(typed)) ?? shown[0];
  }

  function goTo(entry) {
    location.hash = entry.link.getAttribute('href');
    entry.article.querySelector('h2 a, h3 a').focus({preventScroll: true});
  }

  function move(step) {
    const shown = entries.filter((entry) => entry.shown);
    const now = shown.findIndex((entry) => entry.link === document.activeElement);
    const next = now + step;
    if (next < 0) return field.focus();
    if (next < shown.length) shown[next].link.focus();
  }

  const arrows = {ArrowDown: 1, ArrowUp: -1};
  document.addEventListener('keydown', (event) => {
    const active = document.activeElement;
    if (event.ctrlKey || event.altKey || event.metaKey || event.isComposing) return;
    if (event.key === '/' && active !== field) {
      field.focus();
      field.select();
    } else if (event.key === 'Escape' && (active === field || field.value !== '')) {
      clear();
      field.focus();
    } else if (event.key === 'Enter' && active === field) {
      const entry = field.value.trim() === '' ? undefined : best();
      if (entry) goTo(entry);
    } else if (event.key in arrows && (active === field || links.includes(active))) {
      move(arrows[event.key]);
    } else {
      return;
    }
    event.preventDefault();
  });
  field.addEventListener('input', filter);

  // A link to a command that the search has hidden shows everything again.
  window.addEventListener('hashchange', () => {
    const target = document.getElementById(decodeURIComponent(location.hash.slice(1)));
    if (target === null || target.closest('[hidden]') === null) return;
    clear();
    target.scrollIntoView();
  });

  document.querySelector('.search').hidden = false;
  filter();
})();
