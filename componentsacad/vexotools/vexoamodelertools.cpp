#include "vexoamodelertools.h"

#include "vexoamodelertools_internal.h"

#include "cvxlogentry.h"

#include <cmath>

using AModeler::Body;

namespace {

/// Factors of the copies that a cut is tried on: down from 1 to the lower bound, then up to the upper one.
constexpr double kFirstFactor = 1.0001, kFactorStep = 0.0001, kLeastFactor = 0.99, kMostFactor = 1.01;
constexpr int kMostCuts = 220;
/// The tolerance ladder ends at 10 to this power, up and down.
constexpr int kMostRungs = 3;

template <class Operation>
bool combine(Body* a, const Body* b, Operation operation) {
    if (!a || !b) return false;
    try {
        const Body backup = a->copy(), other = b->copy();
        try {
            *a = operation(backup.copy(), other);
            return true;
        } catch (...) {
            a->init();
            *a = backup;
        }
    } catch (...) { // no memory for the copies: `a` was not touched yet
    }
    return false;
}

/// Sets the modeller's tolerance back to what it was.
class ToleranceGuard {
public:
    ~ToleranceGuard() { set(m_saved); }
    ToleranceGuard() = default;
    ToleranceGuard(const ToleranceGuard&) = delete;
    ToleranceGuard& operator=(const ToleranceGuard&) = delete;

    [[nodiscard]] double saved() const { return m_saved; }
    /// False, and the tolerance as it was, for a value that the modeller refuses.
    static bool set(double epsilon) {
        return vexo::guarded(false, [&] {
            AModeler::setEpsAbs(epsilon);
            return true;
        });
    }

private:
    double m_saved = AModeler::gEpsAbs;
};

/// The body cut behind the plane, after it was scaled about the mean of its vertices.
bool cutScaled(Body& body, double factor, const AModeler::Plane& plane) {
    return vexo::guarded(false, [&] {
        Body copy = body.copy();
        if (factor != 0.0) VEXOAModelerTools::inflate(&copy, factor);
        copy.section(plane, AModeler::keepInputBodiesWhenBooleanOperationsFail());
        if (!copy.isValid(-1)) return false;
        body = std::move(copy);
        return true;
    });
}

} // namespace

VEXOAModelerTools::~VEXOAModelerTools() = default;

bool VEXOAModelerTools::addBodys(Body* a, const Body* b) {
    CVxLogEntry entry(L"VEXOAModelerTools::addBodys");
    return combine(a, b, [](const Body& one, const Body& other) { return one + other; });
}

bool VEXOAModelerTools::subBodys(Body* a, const Body* b) {
    CVxLogEntry entry(L"VEXOAModelerTools::subBodys");
    return combine(a, b, [](const Body& one, const Body& other) { return one - other; });
}

bool VEXOAModelerTools::intersectBodys(Body* a, const Body* b) {
    CVxLogEntry entry(L"VEXOAModelerTools::intersectBodys");
    return combine(a, b, [](const Body& one, const Body& other) { return one * other; });
}

bool VEXOAModelerTools::intersectBodysEx(Body* a, const Body* b) {
    CVxLogEntry entry(L"VEXOAModelerTools::intersectBodysEx");
    if (!a || !b) return false;
    const ToleranceGuard tolerance;
    const auto tryWith = [&](double epsilon) { return ToleranceGuard::set(epsilon) && intersectBodys(a, b); };
    bool done = false;
    for (int rung = 0; rung <= kMostRungs && !done; ++rung)
        done = tryWith(tolerance.saved() * std::pow(10.0, -rung)) ||
               tryWith(tolerance.saved() * std::pow(10.0, rung));
    return done;
}

bool VEXOAModelerTools::section(Body* body, AModeler::Plane plane) {
    CVxLogEntry entry(L"VEXOAModelerTools::section");
    if (!body) return false;
    double factor = kFirstFactor, direction = -1.0;
    for (int left = kMostCuts; left > 0 && factor <= kMostFactor; --left) {
        if (factor < kLeastFactor) {
            direction = 1.0;
            factor = 1.0;
        }
        factor += direction * kFactorStep;
        if (cutScaled(*body, factor, plane)) return true;
    }
    return false;
}

void VEXOAModelerTools::inflate(Body* body, double factor) {
    CVxLogEntry entry(L"VEXOAModelerTools::inflate");
    if (!body || body->vertexCount() == 0) return;
    AcGeVector3d sum;
    for (const AModeler::Vertex* vertex = body->vertexList(); vertex; vertex = vertex->next())
        sum += vertex->point().asVector();
    const AcGePoint3d mean = AcGePoint3d::kOrigin + sum / body->vertexCount();
    static_cast<void>(vexo::guarded(false, [&] {
        body->scale(factor, mean);
        return true;
    }));
}

const wchar_t* VEXOAModelerTools::getErrorMsg(AModeler::ErrorCode code) {
    CVxLogEntry entry(L"VEXOAModelerTools::getErrorMsg");
    for (const ErrorMessage* message = ErrorMessages; message->code != AModeler::eOk; ++message)
        if (message->code == code) return message->text;
    return AModeler::errorString(code);
}
