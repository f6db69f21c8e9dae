#pragma once

#include "dbcolor.h"
#include "dbid.h"
#include "wildcardpattern.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>

class AcDbDatabase;
class AcDbEntity;

/// How an entity looks once its layer and the block references around it have been asked.
struct Look {
    AcDbObjectId layer{};
    std::uint32_t rgb = 0;        ///< 0xRRGGBB on the paper
    std::vector<double> dashes{}; ///< as in a linetype, in drawing units; empty is an unbroken line
    double lineweight = 0.0;      ///< millimetres; 0 is the thinnest
};

/// What a picture stands on and is drawn with.
struct Paper {
    std::uint32_t ground = 0xFFFFFF;
    bool isShown = true; ///< false: the ground is what lies behind the picture
    bool isDark() const;
    /// Of index 7 and of colours that could not be seen on the ground, white or black.
    std::uint32_t ink() const { return isDark() ? 0xFFFFFF : 0; }
};

/// What an entity says of its look: by layer and by block as they stand.
struct WantedLook {
    AcDbObjectId layer{};
    AcCmEntityColor color{};
    AcDbObjectId linetype{}; ///< null is by layer
    double linetypeScale = 1.0;
    int lineweight = -1; ///< AcDb::LineWeight
};

/// The looks of a drawing's entities. What a layer or linetype says is read once.
class LookTable {
public:
    explicit LookTable(AcDbDatabase& database, const Paper& paper = {});

    /// Layers whose names do not fit the pattern are hidden.
    void showOnly(std::wstring_view pattern) { m_shown.emplace(pattern); }
    /// Until the next call these are hidden too: what a viewport of a sheet does not show.
    void hideAlso(std::vector<AcDbObjectId> layers) { m_hiddenToo = std::move(layers); }
    const std::vector<AcDbObjectId>& hiddenToo() const { return m_hiddenToo; }
    const Paper& paper() const { return m_paper; }

    /// The look where the entity stands: directly in a space (around is null) or in a block whose reference
    /// looks like `around`. Layer 0 in a block is the reference's layer, and "by block" is the reference's
    /// property.
    Look lookOf(const WantedLook& wanted, const Look* around);
    Look lookOf(const AcDbEntity& entity, const Look* around);
    /// Off or frozen, not to be plotted, or the layer of dimensions' definition points.
    bool isHidden(AcDbObjectId layer);
    /// What is on such a layer hides with all its parts, a block reference too.
    bool isFrozen(AcDbObjectId layer);

    /// The colour on the paper: white, index 7 and by-layer colours without a layer are its ink; on dark
    /// paper so is black.
    std::uint32_t paperColor(const AcCmEntityColor& color) const;

private:
    struct Layer {
        bool isHidden = false;
        bool isFrozen = false;
        std::uint32_t rgb = 0;
        AcDbObjectId linetype{};
        int lineweight = -3;
    };

    const Layer& layerOf(AcDbObjectId id);
    bool isHiddenHere(AcDbObjectId layer) const;
    const std::vector<double>& dashesOf(AcDbObjectId linetype);

    AcDbDatabase& m_database;
    Paper m_paper;
    std::optional<hostkit::WildcardPattern> m_shown;
    std::vector<AcDbObjectId> m_hiddenToo;
    double m_linetypeScale;
    std::unordered_map<AcDbObjectId, Layer> m_layers;
    std::unordered_map<AcDbObjectId, std::vector<double>> m_linetypes;
};
