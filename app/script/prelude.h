// The names that a script knows, in its own language: thin shells over the Bridge.
#pragma once

namespace app::script {

/// Name under which the prelude is evaluated; frames of it are left out of error places.
inline constexpr const char* kPreludeName = "prelude";

/// A function that takes the Bridge and defines the script's names on the global object. Rows are handed over as
/// lists of [name, value] pairs, which keep their order whatever the names look like; thrown values of callbacks
/// are handed back boxed, because a thrown 5 could not be told from a returned one.
inline constexpr const char* kPrelude = R"js((function (bridge) {
  "use strict";
  const global = this;
  const screens = new Map();
  const define = (name, value) => Object.defineProperty(global, name, { value, writable: true, configurable: true });
  const pairs = (row) => Array.isArray(row) ? row : Object.entries(Object(row));
  const shown = (value) => typeof value === "object" && value !== null ? JSON.stringify(value) : String(value);

  class Screen {
    constructor(id) { Object.defineProperty(this, "id", { value: id }); }
    get name() { return bridge.screenName(this.id); }
    type(name, value) { return bridge.type(this.id, name, value); }
    enter(name) { return bridge.enter(this.id, name); }
    leave(name) { return bridge.leave(this.id, name === undefined ? "" : name); }
    key(name) { return bridge.key(this.id, name); }
    text(name) { return bridge.text(this.id, name); }
    value(name) { return bridge.value(this.id, name); }
    checked(name) { return bridge.checked(this.id, name); }
    enabled(name) { return bridge.enabled(this.id, name); }
    visible(name) { return bridge.visible(this.id, name); }
    focused() { return bridge.focused(this.id); }
    check(name, on) { return bridge.check(this.id, name, on === undefined ? true : Boolean(on)); }
    choose(name, caption) { return bridge.choose(this.id, name, caption); }
    click(name, row) {
      return row === undefined ? bridge.click(this.id, name) : bridge.clickRow(this.id, name, row);
    }
    menu(caption) { return bridge.menu(this.id, caption); }
    search(name) { return bridge.search(this.id, name); }
    rows(dataset) { return bridge.rows(this.id, dataset); }
    select(dataset, which) {
      return typeof which === "number" ? bridge.selectRow(this.id, dataset, which)
                                       : bridge.selectWhere(this.id, dataset, pairs(which));
    }
    cell(dataset, field, ...typed) { return bridge.cell(this.id, dataset, field, typed); }
    append(dataset, row) { return bridge.append(this.id, dataset, pairs(row)); }
    set(dataset, row) { return bridge.set(this.id, dataset, pairs(row)); }
    remove(dataset) { return bridge.remove(this.id, dataset); }
    dblclick(dataset) { return bridge.dblclick(this.id, dataset); }
    close() { return bridge.close(this.id); }
  }
  const wrap = (id) => {
    if (id < 0) return null;
    if (!screens.has(id)) screens.set(id, new Screen(id));
    return screens.get(id);
  };

  define("open", (name) => wrap(bridge.open(name)));
  define("screen", (name) => wrap(bridge.screen(name)));
  define("answer", (text, reply) => bridge.answer(text, reply));
  define("lookup", (name, key) => typeof key === "object" && key !== null ? bridge.lookupRow(name, pairs(key))
                                                                          : bridge.lookup(name, key));
  define("chooseFile", (title, path) => bridge.chooseFile(title, path));
  define("modal", (name, act) => {
    if (typeof act !== "function") bridge.refuse("modal precisa de uma função: modal(tela, s => { ... })");
    bridge.modal(name, (id) => {
      try { act(wrap(id)); return null; } catch (thrown) { return { thrown }; }
    });
  });
  define("messages", () => bridge.messages());
  define("wait", (seconds) => bridge.wait(Number(seconds)));
  define("jobs", () => bridge.jobs());
  define("clock", (moment) => bridge.clock(moment));
  define("db", Object.freeze({
    query: (sql, parameters) => bridge.query(sql, parameters === undefined ? [] : parameters),
    exec: (sql, parameters) => bridge.exec(sql, parameters === undefined ? [] : parameters),
    check: () => bridge.checkBooks(),
  }));
  define("assert", (condition, text) => {
    if (!condition) bridge.failAssertion(text === undefined ? "a condição não vale" : String(text));
  });
  define("assertEqual", (actual, expected, text) => {
    const [left, right] = [JSON.stringify(actual), JSON.stringify(expected)];
    if (Object.is(actual, expected) || (left === right && typeof actual === "object")) return;
    bridge.failAssertion((text === undefined ? "" : text + ": ") + "veio " + String(left) + ", esperava " + String(right));
  });
  define("format", (number, pattern) => bridge.format(Number(number), pattern));
  define("print", (...values) => bridge.print(values.map(shown).join(" ")));
}))js";

}  // namespace app::script
