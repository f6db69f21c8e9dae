extern "C" int acrxEntryPoint(int, void*) { return 0; }
