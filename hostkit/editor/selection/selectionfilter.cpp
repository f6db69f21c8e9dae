#include "selectionfilter.h"

#include "filtercompiler.h"

namespace hostkit {

SelectionFilter::SelectionFilter(std::unique_ptr<const FilterProgram> program)
    : m_program(std::move(program)) {}
SelectionFilter::SelectionFilter(SelectionFilter&&) noexcept = default;
SelectionFilter& SelectionFilter::operator=(SelectionFilter&&) noexcept = default;
SelectionFilter::~SelectionFilter() = default;

std::optional<SelectionFilter> SelectionFilter::compile(const resbuf* list, AcDbDatabase& database,
                                                        std::wstring* reason) {
    if (!list) return SelectionFilter(nullptr);
    FilterCompiler compiler(list, database);
    std::unique_ptr<const FilterProgram> program = compiler.compile();
    if (program) return SelectionFilter(std::move(program));
    if (reason) *reason = compiler.reason();
    return std::nullopt;
}

bool SelectionFilter::accepts(const AcDbEntity& entity) const {
    if (!m_program) return true;
    FilterCandidate candidate(entity, m_program->tests);
    return m_program->condition->holds(candidate);
}

} // namespace hostkit
