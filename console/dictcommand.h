#pragma once

/// The console's command DICT [CONTENTS] [TABLE | JSON [FILE]].
void dictCommand();
