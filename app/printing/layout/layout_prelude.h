// The names that a layout knows, in its own language: thin shells over the LayoutBridge.
#pragma once

namespace app::printing {

/// Names under which prelude and layout are evaluated; error places are looked for in frames of the layout.
inline constexpr const char* kPreludeName = "prelude";
inline constexpr const char* kLayoutName = "layout";

/// A function that defines the layout's names on the global object and hands back what the program calls: `call`, which
/// makes an Error of whatever a function throws, and `rowFactory`. A name that nobody defined is a function of the
/// screen's, found by a Proxy behind the global object; anything but calling it is told as an unknown name.
inline constexpr const char* kPrelude = R"js((function (bridge, names, info) {
  "use strict";
  const global = this;
  const define = (name, value) => Object.defineProperty(global, name, { value, writable: true, configurable: true });
  const hidden = (target, name, value) => Object.defineProperty(target, name, { value });

  class Dataset {
    constructor(id, name) { hidden(this, "__dataset", id); hidden(this, "__name", name); }
    get rows() { return bridge.rows(this.__dataset); }
    get count() { return bridge.count(this.__dataset); }
    get current() { return bridge.current(this.__dataset); }
    get first() { return this.count > 0 ? this.rows[0] : null; }
    shown(row, field) { return bridge.shown(this.__dataset, row, String(field)); }
  }
  names.forEach((name, id) => define(name, new Dataset(id, name)));
  define("info", Object.freeze(info));

  define("number", (value, format) => bridge.number(value, format));
  define("date", (value) => bridge.date(value));
  define("time", (value) => bridge.time(value));
  define("encodes", (kind, value) => bridge.encodes(String(kind), value));
  define("textWidth", (text, style) => bridge.textWidth(String(text), style));

  for (const kind of ["band", "fields", "table", "detail", "heading", "paragraph", "space", "rule", "newPage",
                      "keepTogether"]) {
    define(kind, (first, second) => bridge.block(kind, first, second, new Error().stack));
  }
  for (const kind of ["report", "label", "text"]) {
    define(kind, (options) => bridge.root(kind, options, new Error().stack));
  }

  const unknown = (name) => new Proxy(function () {}, {
    apply: (target, self, values) => bridge.unknown(name, values),
    get: () => { throw new ReferenceError("não há conjunto de dados, função ou variável \"" + name + "\""); },
  });
  Object.setPrototypeOf(Object.getPrototypeOf(global), new Proxy(Object.create(null), {
    // Every object inherits from here; only the global one is asked for names.
    get: (target, name, asked) => typeof name === "string" && asked === global ? unknown(name) : undefined,
  }));

  return {
    call: (act, ...values) => {
      try {
        return act(...values);
      } catch (thrown) {
        throw thrown instanceof Error ? thrown : new Error(String(thrown));
      }
    },
    rowFactory: (id, fields) => {
      class Row {}
      hidden(Row.prototype, "__dataset", id);
      for (const field of fields) {
        const capitals = field.toUpperCase();
        if (capitals === field) continue;
        Object.defineProperty(Row.prototype, capitals, { get() { return this[field]; } });
      }
      return (...values) => {
        const row = new Row();
        for (let at = 0; at < fields.length; ++at) row[fields[at]] = values[at];
        return row;
      };
    },
  };
}))js";

}  // namespace app::printing
