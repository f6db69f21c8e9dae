// Stand-in for the host's AcDbViewport. Covers the place on the sheet, the view of the model, frozen layers and clipping; leaves out its user coordinate system, grid, visual style and scale's name, which are kept as the drawing has them.
#pragma once

#include "dbent.h"
#include "gepnt2d.h"

#include <vector>

/// A window on a sheet that shows the model. Its outline is an upright rectangle, or a closed curve of the
/// same sheet. A new one is on, has the number 2 and shows a unit of the plan.
///
/// Drawings of R12 keep the view as extended data of the application ACAD ("MVIEW"); it is read from there
/// until it is set.
class AcDbViewport : public AcDbEntity {
    ACRX_DECLARE_MEMBERS(AcDbViewport)

public:
    AcDbViewport() = default;
    AcDbViewport(const AcDbViewport&) = default;

    // On the sheet, in its units. Sizes are above 0.

    AcGePoint3d centerPoint() const { return m_center; }
    Acad::ErrorStatus setCenterPoint(const AcGePoint3d& center);
    double width() const { return m_width; }
    Acad::ErrorStatus setWidth(double width);
    double height() const { return m_height; }
    Acad::ErrorStatus setHeight(double height);
    /// Among those of its sheet; 1 is the sheet itself.
    Adesk::Int16 number() const { return m_number; }
    Acad::ErrorStatus setNumber(Adesk::Int16 number);
    bool isOn() const;
    Acad::ErrorStatus setOn();
    Acad::ErrorStatus setOff();
    bool isLocked() const { return (flags() & kLocked) != 0; }
    Acad::ErrorStatus setLocked() { return setFlag(kLocked, true); }
    Acad::ErrorStatus setUnlocked() { return setFlag(kLocked, false); }
    bool isNonRectClipOn() const { return (flags() & kClipped) != 0 && !m_clipId.isNull(); }
    Acad::ErrorStatus setNonRectClipOn(bool isClipped) { return setFlag(kClipped, isClipped); }
    AcDbObjectId nonRectClipEntityId() const { return m_clipId; }
    /// Null takes it away; eInvalidInput for an id of another drawing.
    Acad::ErrorStatus setNonRectClipEntityId(AcDbObjectId id);

    // Of the model.

    /// False where the view is that of R12's extended data.
    bool tellsView() const { return m_viewHeight > 0.0; }

    /// In the display's coordinates (hostkit::displayToWorld): what stands in the middle.
    AcGePoint2d viewCenter() const { return view().center; }
    Acad::ErrorStatus setViewCenter(const AcGePoint2d& center);
    AcGePoint3d viewTarget() const { return view().target; }
    Acad::ErrorStatus setViewTarget(const AcGePoint3d& target);
    /// From the target to the eye; its length is the camera's distance.
    AcGeVector3d viewDirection() const { return view().direction; }
    Acad::ErrorStatus setViewDirection(const AcGeVector3d& direction);
    /// Of what is seen, in drawing units; 0 where a drawing of R12 tells no view.
    double viewHeight() const { return view().height; }
    Acad::ErrorStatus setViewHeight(double height);
    double twistAngle() const { return view().twist; }
    Acad::ErrorStatus setTwistAngle(double angle);
    double lensLength() const { return view().lensLength; }
    Acad::ErrorStatus setLensLength(double length);
    double frontClipDistance() const { return view().frontClip; }
    double backClipDistance() const { return view().backClip; }
    bool isPerspectiveOn() const { return (flags() & 1) != 0; }
    /// Sheet units for a drawing unit; 0 where that cannot be told.
    double customScale() const;
    /// By the view's height. eInvalidInput unless above 0.
    Acad::ErrorStatus setCustomScale(double scale);
    /// The bits of the view's modes (hostkit::CurrentView::mode) and of the viewport's states.
    Adesk::Int32 flags() const { return view().flags; }

    /// Layers of the drawing that it does not show.
    std::vector<AcDbObjectId> frozenLayers() const { return view().frozen; }
    bool isLayerFrozenInViewport(AcDbObjectId layer) const;
    /// eNotThatKindOfClass, and none is frozen, where one is no layer.
    Acad::ErrorStatus freezeLayersInViewport(const AcDbObjectIdArray& layers);
    Acad::ErrorStatus thawLayersInViewport(const AcDbObjectIdArray& layers);

    /// The frame, but for the sheet itself and where a curve clips, which draws itself. What is seen of the
    /// model is the device's to show.
    Adesk::Boolean worldDraw(AcGiWorldDraw* draw) override;
    AcRxObject* clone() const override { return new AcDbViewport(*this); }
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

private:
    struct Filing;
    struct View {
        AcGePoint2d center;
        AcGePoint3d target;
        AcGeVector3d direction = AcGeVector3d::kZAxis;
        double height = 0.0;
        double twist = 0.0;
        double lensLength = 50.0;
        double frontClip = 0.0;
        double backClip = 0.0;
        Adesk::Int32 flags = 0;
        std::vector<AcDbObjectId> frozen;
    };
    static constexpr Adesk::Int32 kLocked = 0x4000;
    static constexpr Adesk::Int32 kClipped = 0x10000;
    static constexpr Adesk::Int32 kOff = 0x20000;

    void followInViewOfR12();
    View view() const;
    View ownView() const;
    bool readViewOfR12(View& view) const;
    Acad::ErrorStatus setView(const View& view);
    Acad::ErrorStatus setFlag(Adesk::Int32 flag, bool isSet);
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;

    AcGePoint3d m_center;
    double m_width = 1.0;
    double m_height = 1.0;
    Adesk::Int16 m_status = 1;
    Adesk::Int16 m_number = 2;
    AcGePoint2d m_viewCenter;
    AcGePoint3d m_target;
    AcGeVector3d m_direction{0.0, 0.0, 1.0};
    double m_viewHeight = 1.0; ///< 0: the drawing told none
    double m_twist = 0.0;
    double m_lensLength = 50.0;
    double m_frontClip = 0.0;
    double m_backClip = 0.0;
    Adesk::Int32 m_flags = 0;
    std::vector<AcDbObjectId> m_frozen;
    AcDbObjectId m_clipId;
};
