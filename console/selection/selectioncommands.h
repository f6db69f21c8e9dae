#pragma once

/// SELECT [FILTER] WAYS... [Table | Json [FILE [OVERWRITE]]]: what is selected becomes the previous and the
/// implied selection, and is told by type and layer.
void selectCommand();
/// ERASE [WAYS]: the implied selection, or what is selected now.
void eraseCommand();
/// CHPROP [WAYS] [LAyer NAME | Color COLOUR | LType NAME]...
void changePropertiesCommand();
