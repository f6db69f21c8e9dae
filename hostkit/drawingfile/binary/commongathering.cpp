#include "commongathering.h"

#include "longcolors.h"
#include "transcriptvalues.h"

#include <cmath>

namespace hostkit {
namespace {

constexpr short layerCode = 8, linetypeCode = 6, scaleCode = 48, hiddenCode = 60, shadowCode = 284,
                materialCode = 347, styleCode = 348, weightCode = 370, plotStyleCode = 390,
                transparencyCode = 440, pictureCode = 310, pictureSizeCode = 92, longPictureSizeCode = 160;

} // namespace

void CommonGathering::whole(std::uint16_t slot, std::int64_t value) {
    if (slot) setValue(slot, ValueKind::whole, static_cast<double>(value));
}

void CommonGathering::link(std::uint16_t slot, std::uint64_t handle) {
    if (!slot) return;
    set(slot).reference = {0, handle};
    m_values[slot] = static_cast<double>(handle);
}

std::int64_t CommonGathering::wholeOf(int code, std::int64_t otherwise) {
    const RecordGroup* const group = takeGroup(code);
    return group ? static_cast<std::int64_t>(numberOf(*group)) : otherwise;
}

std::uint64_t CommonGathering::handleOf(int code) {
    const RecordGroup* const group = takeGroup(code);
    return group ? handleFromText(group->value).value_or(0) : 0;
}

void CommonGathering::head(const RecordLinks& links) {
    readHead(*m_record, m_head);
    for (std::size_t i = 0; i < m_record->groups.size(); ++i)
        m_isTaken[i] = m_record->groups[i].isTaken() || m_record->groups[i].part == foreignPart;
    link(slots().handle, m_head.handle);
    whole(slots().reactorCount, static_cast<std::int64_t>(m_head.reactors.size()));
    std::vector<RecordValue>& reactors = m_scope->array(slots().reactors);
    for (const std::uint64_t reactor : m_head.reactors) reactors.emplace_back().reference = {0, reactor};
    whole(slots().noExtension, m_head.extensionDictionary == 0);
    link(slots().extensionDictionary, m_head.extensionDictionary);
    link(slots().owner, links.owner ? links.owner : m_head.owner);
}

void CommonGathering::entity(const RecordLinks& links) {
    findMark("AcDbEntity");
    whole(slots().mode, links.entityMode);
    const std::uint64_t own = m_head.handle;
    whole(slots().noLinks, links.isInChain && links.previous == own - 1 && links.next == own + 1);
    link(slots().previous, links.previous);
    link(slots().next, links.next);
    layer();
    linetype();
    ruled(slots().materialRule, slots().material, handleOf(materialCode));
    color();
    whole(slots().weight, indexOfWeight(static_cast<int>(wholeOf(weightCode, -1))));
    const RecordGroup* const scale = takeGroup(scaleCode);
    setValue(slots().scale, ValueKind::real, scale ? numberOf(*scale) : 1.0);
    whole(slots().hidden, wholeOf(hiddenCode, 0));
    ruled(slots().plotStyleRule, slots().plotStyle, handleOf(plotStyleCode));
    whole(slots().shadow, wholeOf(shadowCode, 0));
    const RecordGroup* const style = takeGroup(styleCode);
    whole(slots().hasStyle, style != nullptr);
    if (style) link(slots().style, handleFromText(style->value).value_or(0));
    picture();
}

void CommonGathering::ruled(std::uint16_t rule, std::uint16_t slot, std::uint64_t target) {
    constexpr int isStored = 3;
    const RecordValue* const before = m_original && rule ? m_original->values.find(rule) : nullptr;
    if (target == 0 && before && before->whole != isStored) return; // by block, or by the standard
    whole(rule, target ? isStored : 0);
    link(slot, target);
}

void CommonGathering::layer() {
    const RecordGroup* const group = takeGroup(layerCode);
    const std::uint64_t named = group ? m_names.handleOfValue("LAYER", group->value) : 0;
    link(slots().layer, named ? named : m_names.handleOf("LAYER", "0"));
}

void CommonGathering::linetype() {
    const RecordGroup* const group = takeGroup(linetypeCode);
    if (!group) return whole(slots().linetypeRule, 0);
    const std::string name = upperCaseAscii(withoutBlanks(group->value));
    if (name == "BYLAYER") return whole(slots().linetypeRule, 0);
    if (name == "BYBLOCK") return whole(slots().linetypeRule, 1);
    if (name == "CONTINUOUS") return whole(slots().linetypeRule, 2);
    const std::uint64_t target = m_names.handleOfValue("LTYPE", withoutBlanks(group->value));
    whole(slots().linetypeRule, target ? 3 : 0);
    link(slots().linetype, target);
}

void CommonGathering::color() {
    ValueColor color;
    color.index = std::abs(static_cast<int>(wholeOf(colorCode, byLayerIndex)));
    const RecordGroup* const exact = takeGroup(trueColorCode);
    const RecordGroup* const name = takeGroup(colorNameCode);
    const RecordGroup* const transparency = takeGroup(transparencyCode);
    if (m_form >= 18) {
        color.hasValue = exact != nullptr;
        if (exact) color.value = trueColorMethod | (static_cast<std::uint32_t>(numberOf(*exact)) & 0xFFFFFF);
        if (const std::uint64_t book = name ? m_names.handleOfValue("COLOR", name->value) : 0) {
            color.isOfBook = true;
            link(slots().colorBook, book);
        }
        color.hasTransparency = transparency != nullptr;
        if (transparency)
            color.transparency =
                static_cast<std::uint32_t>(static_cast<std::int64_t>(numberOf(*transparency)));
    }
    set(slots().color).color = color;
}

void CommonGathering::picture() {
    takeGroup(pictureSizeCode);
    takeGroup(longPictureSizeCode);
    std::string bytes;
    while (const RecordGroup* const group = takeGroup(pictureCode)) appendDigits(group->value, bytes);
    whole(slots().hasPicture, !bytes.empty());
    whole(slots().pictureSize, static_cast<std::int64_t>(bytes.size()));
    if (!bytes.empty()) set(slots().picture).run = kept(std::move(bytes));
}

void CommonGathering::extendedData() {
    m_hasLostData = false;
    std::vector<RecordValue>& all = m_outermost->array(slots().extendedData);
    std::string bytes;
    std::uint64_t application = 0;
    const auto finish = [&] {
        if (application == 0) return;
        all.emplace_back().reference = {5, application};
        all.emplace_back().run = kept(std::move(bytes));
        bytes.clear();
    };
    const std::vector<RecordGroup>& groups = m_record->groups;
    for (std::size_t i = m_record->extendedDataBegin; i < groups.size(); ++i) {
        if (groups[i].code == applicationCode) {
            finish();
            application = m_names.handleOfValue("APPID", groups[i].value);
            m_hasLostData = m_hasLostData || application == 0;
        } else if (application) {
            m_extendedBytes.append(groups, i, bytes);
        }
    }
    finish();
}

} // namespace hostkit
