#include "librarywork.h"

#include "dialogtemplate.h"
#include "librarylocation.h"
#include "modulecommand.h"
#include "systempath.h"
#include "winbase.h"

namespace {

std::wstring moduleLocation() {
    const std::wstring library = libraryLocation();
    const std::wstring_view name = hostkit::fileNameOfPath(library);
    return library.substr(0, library.size() - name.size()) + L"vexohosttools.so";
}

} // namespace

// It stays loaded: whoever asks again gets the same.
const LibraryWork* findLibraryWork() {
    const auto function = reinterpret_cast<LibraryWorkFunction>(
        hostkit::moduleFunction(LoadLibraryW(moduleLocation().c_str()), libraryWorkFunction));
    return function ? function() : nullptr;
}

const LibraryWork* libraryWorkOrFail() {
    const LibraryWork* const work = findLibraryWork();
    if (!work)
        hostkit::failCommand(Acad::eFileNotFound,
                             moduleLocation() + L": the console's part that calls the library is missing");
    return work;
}
