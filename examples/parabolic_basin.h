// Thacker's planar free surface in a paraboloid of revolution: an exact solution of the shallow-water equations without
// friction. The water is a disc that circles the basin; its surface is a plane at every time, and its edge a moving
// wet/dry front. W.C. Thacker, Some exact solutions to the nonlinear shallow-water wave equations, J. Fluid Mech. 107
// (1981) 499-508; the form used here is that of O. Delestre et al., SWASHES, Int. J. Numer. Meth. Fluids 72 (2013)
// 269-300, "planar surface in a paraboloid".
#pragma once

struct BasinPoint {
    double x = 0.0, y = 0.0;  ///< metres from the centre of the basin
};

/// The basin of one model. Its size follows from the side of the mesh, so that the water always keeps clear of the
/// mesh's edge, and its depth from a period of one hour.
class ParabolicBasin {
public:
    /// side: of the square mesh, metres.
    explicit ParabolicBasin(double side);

    /// Bed elevation, metres. The lowest point, in the middle, stands at 20 m.
    double bed(BasinPoint p) const;
    /// Elevation of the plane of the water surface, metres, also where it lies below the bed. hours: from the start.
    double surface(BasinPoint p, double hours) const;
    /// Velocity, metres a second: the same everywhere in the water.
    BasinPoint velocity(double hours) const;

private:
    double radius_;     ///< of the water disc (a in the papers)
    double excursion_;  ///< of the disc's centre from the basin's (eta)
    double depth_;      ///< of the water in the middle of the disc (h0)
};
