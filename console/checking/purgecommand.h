#pragma once

/// PURGE: lists what nothing in the drawing uses, and erases it; with LIST it lists alone.
void purgeCommand();
