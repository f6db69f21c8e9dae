// Angles of ellipses: the ellipse's own parameter and the angle as seen from its centre; leaves out all else.
#pragma once

namespace hostkit {

// Both count from the longer axis, in radians; the ratio is that of the shorter to the longer radius. The
// point at parameter t lies at cos t of the longer and sin t of the shorter radius. Angle and parameter lie
// in one quarter turn; whole quarter turns stay as they are.

double ellipseParameter(double angle, double radiusRatio);
double ellipseAngle(double parameter, double radiusRatio);
/// The parameter that has exactly this angle, to the last bit, where one is found near: an angle that is set
/// reads the same, and again when it is set anew. Else as ellipseParameter.
double parameterThatReads(double angle, double radiusRatio);

} // namespace hostkit
