#include "geline2d.h"
#include "geline3d.h"
#include "gelnsg2d.h"
#include "gelnsg3d.h"
#include "geray2d.h"
#include "geray3d.h"

namespace AcGeKernel {

namespace {

template <class Vector>
Vector unitOrNone(const Vector& direction) {
    return direction.isZeroLength() ? Vector::kIdentity : direction.normal();
}

} // namespace

template <class T>
LineOf<T>::LineOf()
    : LineOf(Point::kOrigin, Vector::kXAxis) {}

template <class T>
LineOf<T>::LineOf(const Point& point, const Vector& direction)
    : T::Linear(point, unitOrNone(direction), AcGeInterval()) {}

template <class T>
LineOf<T>::LineOf(const Point& point1, const Point& point2)
    : LineOf(point1, point2 - point1) {}

template <class T>
auto LineOf<T>::kXAxis() -> const Line& {
    static const Line line(Point::kOrigin, Vector::kXAxis);
    return line;
}

template <class T>
auto LineOf<T>::kYAxis() -> const Line& {
    static const Line line(Point::kOrigin, Vector::kYAxis);
    return line;
}

template <class T>
void LineOf<T>::getSplitCurves(double param, Curve*& before, Curve*& after) const {
    before = new typename T::Ray(this->evalPoint(param), -this->m_step);
    after = new typename T::Ray(this->evalPoint(param), this->m_step);
}

template <class T>
RayOf<T>::RayOf()
    : RayOf(Point::kOrigin, Vector::kXAxis) {}

template <class T>
RayOf<T>::RayOf(const Point& point, const Vector& direction)
    : T::Linear(point, unitOrNone(direction), AcGeInterval().setLower(0.0)) {}

template <class T>
RayOf<T>::RayOf(const Point& start, const Point& through)
    : RayOf(start, through - start) {}

template <class T>
void RayOf<T>::getSplitCurves(double param, Curve*& before, Curve*& after) const {
    before = after = nullptr;
    if (!(param > 0.0) || !std::isfinite(param)) return;
    before = new typename T::Segment(this->m_origin, this->evalPoint(param));
    after = new Ray(this->evalPoint(param), this->m_step);
}

template <class T>
SegmentOf<T>::SegmentOf()
    : SegmentOf(Point::kOrigin, Vector::kXAxis) {}

template <class T>
SegmentOf<T>::SegmentOf(const Point& start, const Point& end)
    : T::Linear(start, end - start, AcGeInterval(0.0, 1.0)) {
    this->m_end = end;
}

template <class T>
SegmentOf<T>::SegmentOf(const Point& start, const Vector& vector)
    : SegmentOf(start, start + vector) {}

template <class T>
Adesk::Boolean SegmentOf<T>::setInterval(const AcGeInterval& interval) {
    if (!interval.isBounded() || !(interval.length() > 0.0)) return Adesk::kFalse;
    set(this->evalPoint(interval.lowerBound()), this->evalPoint(interval.upperBound()));
    return Adesk::kTrue;
}

template class LineOf<Plane>;
template class LineOf<Space>;
template class RayOf<Plane>;
template class RayOf<Space>;
template class SegmentOf<Plane>;
template class SegmentOf<Space>;

} // namespace AcGeKernel
