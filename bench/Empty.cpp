// The least that can be loaded: the loader's own work.

extern "C" [[gnu::visibility("default")]] int QuenzoBenchEmpty();

int QuenzoBenchEmpty() { return 1; }
