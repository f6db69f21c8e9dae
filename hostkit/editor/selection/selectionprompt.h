// Prompt of a selection: how a person or a script selects; leaves out highlighting.
#pragma once

#include "selectionpicks.h"

#include <optional>
#include <string>
#include <vector>

class AcApDocument;

namespace hostkit {

/// Asks until Enter. Answers, shortened to their capitals, with an underscore in front or without:
///   x,y[,z]                what a pick there meets; where it meets nothing, a window begins there (PICKAUTO
///   1) Window Crossing BOX    by two corners WPolygon CPolygon Fence   by points until Enter; Undo takes the
///   last point back ALL Last Previous Group   as the modes of acedSSGet a handle               the entity;
///   where it reads like one of these words, with a 0 in front Add Remove             what follows comes into
///   the selection, or leaves it Undo                   takes the last way of selecting back Multiple points
///   until Enter, picked at once SIngle                 the next way of selecting that gives something is the
///   last AUto                   as at the start: add, picks and windows ?                      lists these
/// Each is told with the number that it found.
class SelectionPrompt {
public:
    SelectionPrompt(AcApDocument& document, const SelectionMode& mode, const SelectionFilter& filter);

    void setPrompts(std::wstring adding, std::wstring removing);
    /// Of acedSSGet's ":K", before the prompt's own words; in addition to those of acedInitGet.
    void setKeywords(std::wstring keywords) { m_keywords = std::move(keywords); }

    /// RTNORM, RTERROR (nothing was selected, or nobody answers), RTCAN, RTREJ, RTKWORD. The set is good with
    /// RTNORM alone.
    int run(SelectionSet& selection);
    /// What was selected before a keyword ended the prompt.
    SelectionSet takeSelection() { return std::move(m_selection); }

private:
    struct Step;

    int readStep(Step& step);
    int parseStep(const std::wstring& text, Step& step) const;
    int perform(const Step& step);
    int performWord(const std::wstring& word);
    bool isLast(const Step& step) const;
    int windowByCorners(const std::wstring& word);
    int boxFrom(const AcGePoint3d& first);
    int polygon(const std::wstring& word);
    int multiple();
    int readGroup();
    int pickAt(const AcGePoint3d& point);
    void undo();
    int readPoint(const wchar_t* prompt, AcGePoint3d& point) const;
    int readPoints(const wchar_t* first, std::vector<AcGePoint3d>& points) const;
    void take(const Found& found);
    void tell(const Found& found, std::size_t changed) const;

    AcApDocument& m_document;
    SelectionMode m_mode;
    SelectionPicks m_picks;
    std::wstring m_adding = L"Select objects: ";
    std::wstring m_removing = L"Remove objects: ";
    std::wstring m_keywords{};
    SelectionSet m_selection{};
    /// Before a way of selecting: its own entities stand behind these, but for one that removed some.
    struct Earlier {
        std::size_t size;
        std::optional<SelectionSet> whole{};
    };
    std::vector<Earlier> m_earlier{};
    bool m_removes = false;
    bool m_hasFound = false; ///< the latest way of selecting gave something
    bool m_allowsRepeats = false;
};

} // namespace hostkit
