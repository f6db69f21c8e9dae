#pragma once

/// XDATA HANDLE [TABLE | JSON [FILE]]: the extended data of an object, application by application.
void xdataCommand();
