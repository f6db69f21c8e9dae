#pragma once

/// CAPTURE [WAY]...: what the selected entities draw, as the library captures it.
void captureCommand();
/// EXPLODE [WAY]...: parts in place of what is selected. Entities of applications give what they draw.
void explodeCommand();
