#pragma once

/// The commands LAYERS and LIST.
void layersCommand();
void listCommand();
