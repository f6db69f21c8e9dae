// The commands of the module, by what they touch; layers.cpp tells what each one does.
#pragma once

// Names of layers (layernames.cpp)
void makeLayer();
void renameLayers();
void deleteLayers();

// States (layerstates.cpp)
void switchLayersOn();
void switchLayersOff();
void freezeLayers();
void thawLayers();
void lockLayers();
void unlockLayers();
void isolateLayers();

// What lies on layers (layercontents.cpp)
void countEntities();
void listEntities();
void emptyLayers();
