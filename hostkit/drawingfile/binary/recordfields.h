// The fields of one record of a binary drawing, as they stand in it.
#pragma once

#include "binarycontainer.h"
#include "bitreader.h"
#include "recordlayout.h"
#include "recordvalues.h"

#include <array>
#include <optional>

namespace hostkit {

/// A record: where its three streams begin and end, and what they hold. The fields of a record that has no
/// layout are the common ones.
struct RecordFields {
    const RecordLayout* layout = nullptr;
    unsigned type = 0;
    std::uint64_t handle = 0;
    bool isKnown = false;                   ///< it has a layout
    bool isWhole = false;                   ///< all three streams ended where they had to
    bool isSumRight = true;                 ///< its checksum
    std::size_t dataBegin = 0, dataEnd = 0; ///< bits: of what follows the common fields, where they have been
                                            ///< read alone, and their end
    std::size_t textBegin = 0, textEnd = 0, referencesBegin = 0, referencesEnd = 0;
    RecordScope values;

    /// By the layout's name, outside of loops; null where the record has none. For single looks: code that
    /// goes over many records keeps the slot.
    [[nodiscard]] const RecordValue* value(std::string_view name) const;
    /// Empty where the record has none.
    [[nodiscard]] const std::vector<RecordValue>& array(std::string_view name) const;
    /// The handle that a reference of that name tells; 0 where there is none.
    [[nodiscard]] std::uint64_t referenceTo(std::string_view name) const;
};

/// How a class of a drawing is numbered and named.
struct BinaryClass {
    unsigned number = 0;
    int proxyFlags = 0;
    std::string application, className, dxfName; ///< UTF-8
    bool wasProxy = false, isEntity = false;
    std::int32_t instances = 0;
    std::int32_t release = 0, maintenance = 0; ///< of the program that it came with
    std::array<bool, 3> endsWithZero{}; ///< up to 2004: the texts above have a zero that counts as theirs
};

/// Reads records of one drawing; what it is given must outlive it.
class RecordReading {
public:
    RecordReading(const BinaryContainer& container, std::span<const BinaryClass> classes);

    /// The record at the offset in the section of objects. False where nothing can be made of it: it goes
    /// past the section's end, or its parts past its own. `fields` is used again from one record to the next.
    [[nodiscard]] bool read(std::size_t offset, RecordFields& fields);
    /// The same, of its common fields alone: for going over many records. `isKnown` and `isWhole` speak of
    /// these.
    [[nodiscard]] bool readCommon(std::size_t offset, RecordFields& fields);
    /// The bytes of the record with its size and its checksum; none where it goes past the section's end.
    [[nodiscard]] ByteSpan recordAt(std::size_t offset) const;
    /// The number of the record's kind; 0 where none can be read.
    [[nodiscard]] unsigned typeAt(std::size_t offset) const;
    /// That of the common fields, with `isKnown` false, for a kind that has none.
    [[nodiscard]] const RecordLayout* layoutOf(unsigned type, bool& isKnown) const;
    /// Characters of a text that was read: bytes of the drawing's code page up to 2004, from then on UTF-16.
    /// A zero at the end is left out.
    [[nodiscard]] std::string text(const RecordValue& value) const;
    /// The same behind `bytes`.
    void appendText(const ValueRun& run, std::string& bytes) const;
    [[nodiscard]] ByteSpan objects() const { return m_objects; }
    [[nodiscard]] int form() const { return m_form; } ///< 15, 18, 21, 24, 27, 32
    [[nodiscard]] std::span<const BinaryClass> classes() const { return m_classes; }
    /// The class of a type that the drawing numbers itself; null for others.
    [[nodiscard]] const BinaryClass* classOf(unsigned type) const;

private:
    friend class FieldReading;

    [[nodiscard]] bool findStreams(std::size_t offset, RecordFields& fields);

    const BinaryContainer& m_container;
    std::span<const BinaryClass> m_classes;
    const RecordLayouts& m_layouts;
    ByteSpan m_objects;
    int m_form;
    std::vector<double> m_values;
};

/// Fault in a section's checksum or end is told in the container.
[[nodiscard]] std::vector<BinaryClass> readClasses(BinaryContainer& container);

/// The section for a drawing of the container's form. Classes are numbered from 500 on in their order.
[[nodiscard]] std::vector<std::uint8_t> writeClasses(const BinaryContainer& form,
                                                     std::span<const BinaryClass> classes);

} // namespace hostkit
