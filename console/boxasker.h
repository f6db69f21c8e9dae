#pragma once

#include "boxanswers.h"
#include "script.h"

#include <deque>
#include <string>
#include <vector>

class ConsolePort;

/// Shows boxes as text and answers them: from a file of answers while it has any, by the person at the
/// terminal, else by the refusal, which is told.
class BoxAsker {
public:
    explicit BoxAsker(ConsolePort& port)
        : m_port(port) {}

    /// One answer a line; told by its file and line where it cannot be meant.
    void setAnswers(std::wstring file, std::vector<ScriptLine> answers);
    /// What is done next at the window that waits.
    hostkit::WindowAction ask(const hostkit::ShownWindow& window);
    /// How many answers of the file no box has asked for.
    std::size_t unusedAnswers() const { return m_answers.size(); }
    /// Whether a picture that an answer asked for was not written, which has been told.
    bool hasLostPicture() const { return m_hasLostPicture; }

private:
    bool takeStep(const hostkit::ShownWindow& window, hostkit::WindowAction& action);
    BoxAnswer nextAnswer(const hostkit::ShownWindow& window);
    BoxAnswer answerOfPerson(const hostkit::ShownWindow& window);
    BoxAnswer refusal(const hostkit::ShownWindow& window, const std::wstring& reason);

    ConsolePort& m_port;
    std::wstring m_file;
    std::deque<ScriptLine> m_answers;
    HWND m_window = nullptr; ///< whose steps are waiting
    std::deque<BoxStep> m_steps;
    bool m_hasLostPicture = false;
};
