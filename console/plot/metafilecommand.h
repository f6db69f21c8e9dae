#pragma once

/// METAFILE FILE.emf [OVERWRITE] [ASPECT A | SCALE S] [SELECTED [WAY]...]: the library's picture of copies of
/// the current space, or of what is selected.
void metafileCommand();
