// The coordinate system of the run: that of -crs, else of the projection files beside the input or of the template
// grid.
#pragma once

#include "gdal_outputs/gdal_crs.h"
#include "inputs/mesh.h"
#include "run_control/output_formats.h"
#include "services/options.h"
#include "services/projection.h"

#include <optional>
#include <string>

/// Settles the projection of a run in three steps, each as soon as what it needs is there; nothing is written before
/// the last.
class RunCrs {
public:
    /// Before the inputs are read. -crs wins over the projection files; one that differs as a system gives a WARNING.
    /// Stops the run for a -crs that names no system, or two. Without the GDAL module a -crs that is a .prj file is
    /// taken as it is. All three must live as long as this.
    RunCrs(const RunOptions& options, const OutputFormat& format, Projection& projection);
    RunCrs(const RunCrs&) = delete;
    RunCrs& operator=(const RunCrs&) = delete;

    /// The text of a template grid's .prj, which wins over the projection files.
    void takePrjOf(const std::string& templateName, const std::string& prj);
    /// The system of a template that GDAL has read (well-known text), taken where the run has none; a WARNING when it
    /// is another than that of the projection file.
    void takeSystemOf(const std::string& templateName, const std::string& wkt);

    /// Once the mesh is there: the CoordSys line of a .mif, which has to be exact there; a WARNING for a mesh outside
    /// the area that the system is meant for; and the layers' projection (gisSetProjection).
    void fitMesh(const Mesh& mesh);

private:
    void takeGiven();
    void takePrjFile(const std::string& name);
    void warnWhereDifferent(const std::string& name, const std::string& text) const;
    void use(Crs crs);
    void setLayerProjection() const;

    const RunOptions& options_;
    const OutputFormat& format_;
    Projection& projection_;
    const GdalTable* gdal_ = nullptr;  ///< once it was needed
    std::optional<Crs> crs_;           ///< where GDAL has resolved it
    bool awaited_ = false;             ///< no file has one: that of the template, before anything is missed
};
