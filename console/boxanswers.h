#pragma once

#include "windowaction.h"

#include <string>
#include <vector>

/// One step of an answer: something done at the box, or a picture of it written to a file.
struct BoxStep {
    hostkit::WindowAction action{};
    std::wstring picture{}; ///< the file; empty for an action
};

struct BoxAnswer {
    std::vector<BoxStep> steps{};
    std::wstring problem{};                       ///< what cannot be meant at this box; empty where all can
    const hostkit::ShownControl* field = nullptr; ///< while it is read: the one that a word went to last
};

/// An answer is words separated by blanks, in quotation marks where they hold blanks, done one after the
/// other:
///   Oui, o      a button or check box by its text or its marked letter
///   Largeur     the field behind the label "Largeur :", or a combo box by the text that it shows: a click,
///               which opens the combo box or closes it; `#` and `=` behind it mean that field
///   Enter, Esc, Tab, Space, Up, Down, Home, End, Backspace, Delete, F1, F4    a key; F4 opens the list of a
///               combo box and closes it
///   #3          the third item of the list or combo box that has the focus, or the first one; in a list with
///               marks it changes the mark
///   "#ST 25"    the item of that text, in any list where that one has none
///   =text       writes this into the edit that has the focus, or the first one
///   >box.svg    writes a picture of the box as it stands then
/// An empty answer is Enter. Letters count without regard to case. All of it is looked at before anything is
/// done.
BoxAnswer parseBoxAnswer(const std::wstring& line, const hostkit::ShownWindow& window);

/// The texts of the buttons, for a prompt: "Oui/Non".
std::wstring buttonTexts(const hostkit::ShownWindow& window);
