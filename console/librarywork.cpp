#include "librarywork.h"

#include "dialogtemplate.h"
#include "librarylocation.h"
#include "modulecommand.h"
#include "systempath.h"
#include "winbase.h"

const LibraryWork* libraryWorkOrFail() {
    const std::wstring library = libraryLocation();
    const std::wstring_view name = hostkit::fileNameOfPath(library);
    const std::wstring module = library.substr(0, library.size() - name.size()) + L"vexohosttools.so";
    // It stays loaded: whoever asks again gets the same.
    const auto function = reinterpret_cast<LibraryWorkFunction>(
        hostkit::moduleFunction(LoadLibraryW(module.c_str()), libraryWorkFunction));
    if (function) return function();
    hostkit::failCommand(Acad::eFileNotFound,
                         module + L": the console's part that calls the library is missing");
    return nullptr;
}
