#pragma once

#include "dbcolor.h"
#include "dbid.h"

#include <cstdint>
#include <unordered_map>
#include <vector>

class AcDbDatabase;
class AcDbEntity;

/// How an entity looks once its layer and the block references around it have been asked.
struct Look {
    AcDbObjectId layer{};
    std::uint32_t rgb = 0;        ///< 0xRRGGBB on white paper
    std::vector<double> dashes{}; ///< as in a linetype, in drawing units; empty is an unbroken line
    double lineweight = 0.0;      ///< millimetres; 0 is the thinnest
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
    explicit LookTable(AcDbDatabase& database);

    /// The look where the entity stands: directly in a space (around is null) or in a block whose reference
    /// looks like `around`. Layer 0 in a block is the reference's layer, and "by block" is the reference's
    /// property.
    Look lookOf(const WantedLook& wanted, const Look* around);
    Look lookOf(const AcDbEntity& entity, const Look* around);
    /// Off or frozen, not to be plotted, or the layer of dimensions' definition points.
    bool isHidden(AcDbObjectId layer);
    /// What is on such a layer hides with all its parts, a block reference too.
    bool isFrozen(AcDbObjectId layer);

    /// The colour on white paper: white, index 7 and by-layer colours without a layer are black.
    static std::uint32_t paperColor(const AcCmEntityColor& color);

private:
    struct Layer {
        bool isHidden = false;
        bool isFrozen = false;
        std::uint32_t rgb = 0;
        AcDbObjectId linetype{};
        int lineweight = -3;
    };

    const Layer& layerOf(AcDbObjectId id);
    const std::vector<double>& dashesOf(AcDbObjectId linetype);

    AcDbDatabase& m_database;
    double m_linetypeScale;
    std::unordered_map<AcDbObjectId, Layer> m_layers;
    std::unordered_map<AcDbObjectId, std::vector<double>> m_linetypes;
};
