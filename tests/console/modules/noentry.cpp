extern "C" int nothingThatAHostAsksFor() { return 1; }
