// What a module's command asks of its host beyond the given names: failing in words, and files that it
// writes. The rest of the host is no business of modules.
#pragma once

#include "acadstrc.h"
#include "outputfiles.h"

#include <string_view>

namespace hostkit {

/// For a command that cannot do its work: it counts as failed, with that status and a sentence for the user.
/// The first call of a run counts. Does nothing when no command runs.
void failCommand(Acad::ErrorStatus status, std::wstring_view reason);

/// Asks the user of the running command for a file to write. Without a name it stays empty: the command line.
/// The name is all that is left of the line, or stands in quotation marks; the word OVERWRITE behind it
/// replaces a file that is there, and is asked for where a person sits there. False, and the command has
/// failed with the reason or was stopped, when nothing can be written there: asked before the work, so that
/// none is done in vain.
[[nodiscard]] bool readOutputFile(const wchar_t* prompt, OutputFile& file);
/// For commands that read name and OVERWRITE themselves: false, and the command has failed, when nothing may
/// be written there.
[[nodiscard]] bool acceptOutputFile(const OutputFile& file, OutputFiles::Kind kind = OutputFiles::Kind::file);
/// Writes the file in one step. False, and the command has failed with eFileAccessErr and the reason, when
/// that cannot be done.
[[nodiscard]] bool writeOutputFile(const OutputFile& file, std::string_view bytes);
/// The same with a text, as UTF-8.
[[nodiscard]] bool writeOutputFile(const OutputFile& file, std::wstring_view text);

} // namespace hostkit
