#pragma once

/// Under which the module's texts are asked for.
constexpr const wchar_t* promptsProject = L"STYLES";

enum Prompt : unsigned {
    promptPage = 1,
    promptTextStyle,
    promptLineType,
    promptDimensionStyle,
    promptCover,
    promptWidth,
    promptJustification
};

enum Control : int {
    pageTemplate = 100,
    comboTextStyle = 110,
    comboLineType,
    comboDimensionStyle,
    editCover,
    editWidth,
    editJustification,
    labelFirst
};
