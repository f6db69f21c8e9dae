// What holds of a style's file whatever stands in it; asked by the fuzz target and, of its corpus, by the
// tests.
#pragma once

#include "afxdlgs.h"
#include "vexodlgorstyle.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

namespace styleinvariants {

/// Reads and writes files of its own, in a folder that goes with it.
class Reader {
public:
    Reader() {
        std::string name = (std::filesystem::temp_directory_path() / "vexo-style-XXXXXX").string();
        if (!mkdtemp(name.data())) std::abort();
        m_folder = name;
        m_dialog.SetORStyleData(m_data);
    }
    ~Reader() { std::filesystem::remove_all(m_folder); }
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;

    /// Empty, or what does not hold: the bytes are read or refused; what is read as a style of its type is
    /// written and read again with as many items, from the second writing on as the same one. (What is cut
    /// may end with a blank, and a number too large for a double has no text that would be read.)
    std::string faultOf(std::string_view bytes) {
        std::ofstream(path(), std::ios::binary)
            .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        for (const wchar_t* type : {L"Autosurf", L"BMRepartition", L"DwgStyle"}) {
            m_dialog.SetEntityType(type);
            const Acad::ErrorStatus status = m_dialog.LoadStyleFromFile(path().wstring().c_str());
            if (status == Acad::eOk) return faultOfStyle(type);
            if (status != Acad::eInvalidInput) return "another status";
        }
        return {};
    }

private:
    std::filesystem::path path() const { return m_folder / "a.ORStyle"; }
    bool writeAndRead(const wchar_t* type, std::string& written) {
        m_style.setEntityType(type);
        CStdioFile file(path().wstring().c_str(), CFile::modeCreate | CFile::modeWrite);
        m_style.WriteDataToFile(&file);
        file.Close();
        std::ifstream stream(path(), std::ios::binary);
        written.assign(std::istreambuf_iterator<char>(stream), {});
        return m_dialog.LoadStyleFromFile(path().wstring().c_str()) == Acad::eOk;
    }
    std::string faultOfStyle(const wchar_t* type) {
        const int count = m_style.GetItems().length();
        std::string first, second, third;
        for (std::string* each : {&first, &second, &third})
            if (!writeAndRead(type, *each) || m_style.GetItems().length() != count)
                return "what is written is not read: " + *each;
        return second != third ? "written anew it is another: " + second : "";
    }

    std::filesystem::path m_folder;
    VEXOORStyleData m_style;
    VEXOORStyleData* m_data = &m_style;
    VEXODlgORStyle m_dialog;
};

} // namespace styleinvariants
