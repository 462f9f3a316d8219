// A library that is no module of screens.
extern "C" int tecelagem_something_else() { return 1; }
