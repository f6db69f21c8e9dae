#include "options.h"

#include "consoletext.h"
#include "saveforms.h"
#include "systempath.h"

#include <charconv>
#include <string_view>

namespace {

enum class Wants { nothing, file, text, number, seconds, form };

struct Description {
    std::string_view name;
    Wants wants;
    const wchar_t* value;
    const wchar_t* help;
};

constexpr Description descriptions[] = {
    {"--module", Wants::file, L"FILE", L"load this application module; may be given several times"},
    {"--script", Wants::file, L"FILE", L"run the commands of this file, one a line"},
    {"--command", Wants::text, L"LINE", L"run this command with its answers; may be given several times"},
    {"--answers", Wants::file, L"FILE", L"answer boxes from this file, one answer a line"},
    {"--output", Wants::file, L"FILE", L"save the drawing there when all commands went well"},
    {"--form", Wants::form, L"FORM",
     L"the form that --output has: R12, 2000 to 2018, TEXT, BINARY, DWG; may be given twice"},
    {"--keep-going", Wants::nothing, L"",
     L"run commands behind one that failed, too; it still is a failure in the end"},
    {"--timeout", Wants::seconds, L"SECONDS",
     L"end an opening, a module's loading, a command or a saving that takes longer"},
    {"--no-rescue", Wants::nothing, L"",
     L"leave a crash to the system or a debugger, and the drawing unsaved"},
    {"--record", Wants::file, L"FILE", L"write what was run, its results, time and memory (JSON)"},
    {"--overwrite", Wants::nothing, L"",
     L"let outputs replace files, and --output the drawing that was opened"},
    {"--new", Wants::nothing, L"", L"begin with an empty drawing"},
    {"--registry", Wants::file, L"FILE",
     L"keep settings in this file (else in VEXO_REGISTRY, else the user's own)"},
    {"--library", Wants::file, L"FILE", L"the library to load, if not the one installed with this program"},
    {"--trace", Wants::file, L"FILE", L"write a timeline of the library's calls (trace-event JSON)"},
    {"--install", Wants::file, L"DIR", L"write an installation's settings and make its folders, then end"},
    {"--language", Wants::number, L"N", L"the interface language that --install writes (1036: French)"},
    {"--list-commands", Wants::nothing, L"", L"print all commands with their groups, then end"},
    {"--quiet", Wants::nothing, L"", L"print only what commands print, and problems"},
    {"--version", Wants::nothing, L"", L"print the version, then end"},
    {"--help", Wants::nothing, L"", L"print this, then end"},
};

const Description* findDescription(std::string_view name) {
    if (name == "-h") name = "--help";
    if (name == "-q") name = "--quiet";
    if (name == "-o") name = "--output";
    for (const Description& each : descriptions)
        if (each.name == name) return &each;
    return nullptr;
}

void setFlag(Options& options, std::string_view name) {
    if (name == "--overwrite") options.mayOverwrite = true;
    if (name == "--new") options.isNewDrawing = true;
    if (name == "--list-commands") options.wantsCommandList = true;
    if (name == "--keep-going") options.keepsGoing = true;
    if (name == "--no-rescue") options.isRescued = false;
    if (name == "--quiet") options.isQuiet = true;
    if (name == "--version") options.wantsVersion = true;
    if (name == "--help") options.wantsHelp = true;
}

void setFile(Options& options, std::string_view name, std::wstring file) {
    if (name == "--module")
        options.modules.push_back(std::move(file));
    else if (name == "--script")
        options.script = std::move(file);
    else if (name == "--answers")
        options.answers = std::move(file);
    else if (name == "--output")
        options.output = std::move(file);
    else if (name == "--registry")
        options.registry = std::move(file);
    else if (name == "--library")
        options.library = std::move(file);
    else if (name == "--trace")
        options.trace = std::move(file);
    else if (name == "--record")
        options.record = std::move(file);
    else if (name == "--install")
        options.installRoot = std::move(file);
}

bool setNumber(Options& options, std::string_view value) {
    unsigned number = 0;
    const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), number);
    if (error != std::errc() || end != value.data() + value.size() || number > 0xFFFF) return false;
    options.language = number;
    return true;
}

// From a millisecond to some years.
bool setTimeout(Options& options, std::string_view value) {
    const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), options.timeout);
    return error == std::errc() && end == value.data() + value.size() && options.timeout >= 0.001 &&
           options.timeout <= 1e8;
}

// What ends the program by itself does nothing else.
std::wstring problemOfLastThing(const Options& options) {
    const bool runsCommands = options.script || !options.commands.empty();
    const bool works = runsCommands || options.output || options.answers;
    if (options.installRoot && (works || options.isNewDrawing || options.wantsCommandList ||
                                !options.drawing.empty() || !options.modules.empty()))
        return L"--install ends the program; no drawing, module or command goes with it";
    if (options.wantsCommandList && works)
        return L"--list-commands ends the program; no command, answer or output goes with it";
    return {};
}

std::wstring problemOf(const Options& options) {
    if (options.wantsHelp || options.wantsVersion) return {};
    if (options.script && !options.commands.empty()) return L"--script and --command exclude each other";
    if (!options.forms.empty() && !options.output) return L"--form needs --output";
    if (options.timeout > 0 && !options.isRescued) return L"--timeout and --no-rescue exclude each other";
    if (options.keepsGoing && !options.script && options.commands.empty())
        return L"--keep-going needs --script or --command";
    if (options.language && !options.installRoot) return L"--language needs --install";
    if (const std::wstring problem = problemOfLastThing(options); !problem.empty()) return problem;
    if (options.installRoot || options.wantsCommandList) return {};
    if (options.isNewDrawing && !options.drawing.empty())
        return L"--new begins an empty drawing; no drawing can be opened with it";
    if (!options.isNewDrawing && options.drawing.empty()) return L"no drawing is named";
    return {};
}

std::wstring addForm(Options& options, std::wstring word) {
    hostkit::WriteOptions ignored;
    if (!applyFormWord(word, ignored)) return L"--form: \"" + word + L"\" is none of " + formWords();
    options.forms.push_back(std::move(word));
    return {};
}

// One option with its value; what is wrong with it, or an empty text.
std::wstring applyOption(Options& options, const Description& option, const std::string* value) {
    const std::wstring name = wideFromArgument(option.name);
    if (option.wants == Wants::nothing) {
        if (value) return name + L" takes no value";
        setFlag(options, option.name);
        return {};
    }
    if (!value || value->empty()) return name + L" needs a value";
    if (option.wants == Wants::file) setFile(options, option.name, hostkit::pathFromSystem(*value));
    if (option.wants == Wants::text) options.commands.push_back(wideFromArgument(*value));
    if (option.wants == Wants::form) return addForm(options, wideFromArgument(*value));
    if (option.wants == Wants::number && !setNumber(options, *value))
        return name + L": \"" + wideFromArgument(*value) + L"\" is no number from 0 to 65535";
    if (option.wants == Wants::seconds && !setTimeout(options, *value))
        return name + L": \"" + wideFromArgument(*value) + L"\" is no number of seconds above 0";
    return {};
}

} // namespace

ParsedOptions parseOptions(const std::vector<std::string>& arguments) {
    ParsedOptions parsed;
    Options& options = parsed.options;
    bool areFilesOnly = false;
    for (std::size_t i = 0; i < arguments.size() && parsed.problem.empty(); ++i) {
        const std::string& argument = arguments[i];
        if (!areFilesOnly && argument == "--") {
            areFilesOnly = true;
        } else if (areFilesOnly || argument.empty() || argument[0] != '-' || argument == "-") {
            if (argument.empty())
                parsed.problem = L"an empty file name is given";
            else if (!options.drawing.empty())
                parsed.problem = L"more than one drawing is named";
            options.drawing = hostkit::pathFromSystem(argument);
        } else {
            const std::size_t equals = argument.find('=');
            const Description* option = findDescription(std::string_view(argument).substr(0, equals));
            if (!option) {
                parsed.problem = L"there is no option " + wideFromArgument(argument);
                break;
            }
            const std::string behind = equals == std::string::npos ? "" : argument.substr(equals + 1);
            const std::string* value = equals == std::string::npos ? nullptr : &behind;
            if (!value && option->wants != Wants::nothing && i + 1 < arguments.size())
                value = &arguments[++i];
            parsed.problem = applyOption(options, *option, value);
        }
    }
    if (parsed.problem.empty()) parsed.problem = problemOf(options);
    return parsed;
}

std::wstring helpText() {
    std::wstring text =
        L"Usage: vexohost [options] DRAWING.dxf [--module FILE]... [--script FILE | --command LINE]...\n"
        L"\n"
        L"Opens a drawing without a CAD program, loads application modules, runs commands and, with\n"
        L"--output, saves the result. Without --script and --command it reads commands from its input.\n"
        L"\n"
        L"Options:\n";
    for (const Description& each : descriptions) {
        std::wstring name = wideFromArgument(each.name);
        if (each.wants != Wants::nothing) name += std::wstring(L" ") + each.value;
        text += L"  " + padRight(name, 20) + each.help + L"\n";
    }
    text += L"\n"
            L"Exit codes:\n"
            L"  0    all done\n"
            L"  1    a command failed, or there is none of that name; nothing was saved by --output\n"
            L"  2    the command line is wrong\n"
            L"  3    the drawing cannot be read\n"
            L"  4    the library or a module cannot be loaded\n"
            L"  5    a file or the output could not be written, or stands there already (--overwrite)\n"
            L"  6    the script, the file of answers or the registry cannot be read\n"
            L"  7    a command or module crashed, threw or took too long; the drawing is recovered, see the "
            L"message\n"
            L"  8    the same, and no drawing could be recovered\n"
            L"  130  stopped by Ctrl-C; nothing was saved by --output\n"
            L"\n"
            L"Commands: HELP lists them. Examples:\n"
            L"  vexohost slab.dxf --module slab.so --command CONTOURS --command \"PLOT slab.svg\"\n"
            L"  echo LAYERS | vexohost plan.dxf\n";
    return text;
}
