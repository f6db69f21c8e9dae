// Tries commands with a fault at every point: each in a process of its own, forked from one that stands
// before the command.

#include "faulttrial.h"

#include "temporaryfolder.h"

#include <cstdio>
#include <cstring>
#include <map>
#include <random>
#include <set>
#include <sys/wait.h>
#include <unistd.h>

using namespace faults;

namespace {

struct Settings {
    bool isWhole = false;
    bool namesSilent = false;
    std::size_t first = 500;
    std::size_t random = 500;
    unsigned seed = 1;
    std::string only{};
    std::string sort{};
    std::size_t point = never;
    std::vector<std::string> drawings{};
};

struct Sums {
    std::array<std::size_t, sortCount> tried{};
    std::array<std::size_t, outcomeCount> outcomes{};
    std::size_t silent = 0;
    std::size_t wrong = 0;
    std::map<std::string, std::size_t> problems{};
};

// What a child says: the outcome, whether it was silent, what failed and the problem.
struct Said {
    int outcome = -1;
    int silent = 0;
    std::string failedCall{};
    std::string problem{};
};

template <class Work>
Said inChild(Work work) {
    int ends[2];
    if (pipe(ends) != 0) return {};
    std::fflush(stdout);
    const pid_t process = fork();
    if (process == 0) {
        close(ends[0]);
        alarm(60);
        const Trial trial = work();
        std::string text =
            std::to_string(static_cast<int>(trial.outcome)) + ' ' + (trial.isSilent ? '1' : '0') + ' ';
        text += failed() ? failed() : "-";
        text += ' ';
        text += trial.problem;
        (void)!write(ends[1], text.data(), text.size());
        _exit(0);
    }
    close(ends[1]);
    std::string text;
    char buffer[4096];
    for (ssize_t size; (size = read(ends[0], buffer, sizeof buffer)) > 0;)
        text.append(buffer, static_cast<std::size_t>(size));
    close(ends[0]);
    int status = 0;
    waitpid(process, &status, 0);
    Said said;
    char call[2048] = "";
    int used = 0;
    if (WIFEXITED(status) &&
        std::sscanf(text.c_str(), "%d %d %2047s %n", &said.outcome, &said.silent, call, &used) >= 3) {
        said.failedCall = call;
        said.problem = text.substr(static_cast<std::size_t>(used));
        return said;
    }
    said.outcome = static_cast<int>(Outcome::kWrong);
    said.problem = WIFSIGNALED(status) ? std::string("ended by ") + strsignal(WTERMSIG(status))
                                       : "the process ended early";
    return said;
}

class Runner {
public:
    Runner(const Settings& settings, Sums& sums)
        : m_settings(settings)
        , m_sums(sums)
        , m_random(settings.seed) {}

    void run(const Case& each, const std::string& drawing);

private:
    void tryPoint(Stage& stage, Sort sort, std::size_t number, const Reference& reference);
    void note(const Said& said, Sort sort, std::size_t number);
    std::set<std::size_t> pointsOf(std::size_t count);

    const Settings& m_settings;
    Sums& m_sums;
    std::mt19937 m_random;
    TemporaryFolder m_folder{};
    std::string m_name{};
};

// Every one of the first, and as many of the others by chance.
std::set<std::size_t> Runner::pointsOf(std::size_t count) {
    std::set<std::size_t> points;
    for (std::size_t i = 0; i < std::min(count, m_settings.first); ++i) points.insert(i);
    if (count <= m_settings.first) return points;
    const std::size_t wanted = std::min(count, m_settings.first + m_settings.random);
    std::uniform_int_distribution<std::size_t> any(m_settings.first, count - 1);
    while (points.size() < wanted) points.insert(any(m_random));
    return points;
}

void Runner::run(const Case& each, const std::string& drawing) {
    m_name = each.command + " on " + drawing.substr(drawing.rfind('/') + 1);
    const std::string folder = m_folder.path().string();
    // Once beforehand, so that what is made at the first use and kept is there.
    Reference reference;
    {
        Stage stage(each, drawing, folder);
        if (stage.refusal().empty()) reference = stage.runWhole();
        if (!stage.refusal().empty()) std::printf("%s: %s\n", m_name.c_str(), stage.refusal().c_str());
    }
    clearFolder(folder);
    Stage stage(each, drawing, folder);
    const Said whole = inChild([&] { return stage.run(Sort::kHostCall, never, reference); });
    clearFolder(folder);
    if (whole.outcome == static_cast<int>(Outcome::kWrong)) return note(whole, Sort::kHostCall, never);
    reference.blocks = std::atoll(whole.problem.c_str());
    for (std::size_t sort = 0; sort < sortCount; ++sort)
        if (std::string(sortNames[sort]).find(m_settings.sort) != std::string::npos)
            for (const std::size_t number : pointsOf(reference.counts[sort]))
                if (m_settings.point == never || m_settings.point == number)
                    tryPoint(stage, static_cast<Sort>(sort), number, reference);
}

void Runner::tryPoint(Stage& stage, Sort sort, std::size_t number, const Reference& reference) {
    const Said said = inChild([&] { return stage.run(sort, number, reference); });
    clearFolder(m_folder.path().string());
    ++m_sums.tried[static_cast<std::size_t>(sort)];
    note(said, sort, number);
}

void Runner::note(const Said& said, Sort sort, std::size_t number) {
    ++m_sums.outcomes[static_cast<std::size_t>(said.outcome)];
    if (said.silent) ++m_sums.silent;
    const bool isWrong = said.outcome == static_cast<int>(Outcome::kWrong);
    if (isWrong) ++m_sums.wrong;
    if (!isWrong && !(said.silent && m_settings.namesSilent)) return;
    std::printf("%s: %s %zu (%s): %s\n", m_name.c_str(), sortNames[static_cast<std::size_t>(sort)], number,
                said.failedCall.c_str(), isWrong ? said.problem.c_str() : "silent");
}

void print(const Sums& sums) {
    for (std::size_t sort = 0; sort < sortCount; ++sort)
        std::printf("%zu %ss, ", sums.tried[sort], sortNames[sort]);
    std::printf("tried; %zu ended as before, %zu as after, %zu partly, %zu without the fault; %zu without a "
                "word; %zu wrong\n",
                sums.outcomes[0], sums.outcomes[1], sums.outcomes[2], sums.outcomes[3], sums.silent,
                sums.wrong);
}

Settings readSettings(int count, char** words) {
    Settings settings{.first = 12, .random = 12};
    for (int i = 1; i < count; ++i) {
        const std::string word = words[i];
        const auto next = [&] { return i + 1 < count ? words[++i] : ""; };
        if (word == "--all") settings.isWhole = true, settings.first = settings.random = 500;
        if (word == "--first") settings.first = std::strtoul(next(), nullptr, 10);
        if (word == "--random") settings.random = std::strtoul(next(), nullptr, 10);
        if (word == "--seed") settings.seed = static_cast<unsigned>(std::strtoul(next(), nullptr, 10));
        if (word == "--only") settings.only = next();
        if (word == "--sort") settings.sort = next();
        if (word == "--point") settings.point = std::strtoul(next(), nullptr, 10);
        if (word == "--silent") settings.namesSilent = true;
        if (word.ends_with(".dxf") || word.ends_with(".dwg")) settings.drawings.push_back(word);
    }
    if (settings.drawings.empty()) settings.drawings.push_back(VEXO_SOURCE_DIR "/examples/slab/floor.dxf");
    return settings;
}

} // namespace

int main(int count, char** words) {
    const Settings settings = readSettings(count, words);
    if (settings.point != never) tellCallers();
    Sums sums;
    for (const std::string& drawing : settings.drawings)
        for (const Case& each : settings.isWhole ? allCases() : fewCases()) {
            if (each.command.find(settings.only) == std::string::npos) continue;
            Sums ofCase;
            Runner(settings, ofCase).run(each, drawing);
            std::printf("%s: ", each.command.c_str());
            print(ofCase);
            for (std::size_t i = 0; i < sortCount; ++i) sums.tried[i] += ofCase.tried[i];
            for (std::size_t i = 0; i < outcomeCount; ++i) sums.outcomes[i] += ofCase.outcomes[i];
            sums.silent += ofCase.silent;
            sums.wrong += ofCase.wrong;
        }
    std::printf("seed %u: ", settings.seed);
    print(sums);
    return sums.wrong == 0 ? 0 : 1;
}
