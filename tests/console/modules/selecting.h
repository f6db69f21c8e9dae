#pragma once

/// SELECTWHOLE [FILTER]: what the filter takes of the whole drawing, as one line: how many, and their handles
/// in the order of the selection. Nothing is kept.
void selectWhole();
/// FREEZENAMED NAME and LOCKNAMED NAME: the layer, by all that is left of the line.
void freezeNamed();
void lockNamed();
