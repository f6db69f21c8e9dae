#pragma once

#include "cstring.h"
#include "modulecommand.h"

#include <string>

/// How a table is given out: its form, and the file it goes to, empty for the command line.
struct TableOutput {
    enum class Form { text, csv, json };
    Form form = Form::text;
    hostkit::OutputFile file;
};

/// The form that the keyword "Text", "CSV" or "Json" names.
TableOutput::Form tableForm(const CString& keyword);
/// Prints the table, or writes it in one step and says what is in the file. False, and the command has
/// failed, when the file cannot be written.
bool giveOut(const TableOutput& output, const std::wstring& table, const std::wstring& content);
