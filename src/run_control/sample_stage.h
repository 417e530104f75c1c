// Results along the lines of a layer (-lp) and at the points of one (-cp): the switches in the terms of src/profiles/.
#pragma once

#include "inputs/mesh.h"
#include "inputs/results.h"
#include "profiles/point_stage.h"
#include "profiles/profile_stage.h"
#include "run_control/gdal_layer_output.h"
#include "run_control/output_stage.h"
#include "services/projection.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <set>
#include <string>

/// Takes every dataset and time of a run. Layers of points are written as the times come, tables at the end of a
/// dataset, profiles at the end of the run, so that nothing looks complete after a run that stopped.
class SampleStage : public OutputStage {
public:
    /// Stops the run when a layer that was asked for is not there. Both must live as long as the stage.
    SampleStage(const RunOptions& options, const Projection& projection);

    void begin(const Mesh& mesh, const ResultsKind& kind) override;
    void take(const Results& results, OutputLabel label) override;
    void takeMesh(const Mesh& mesh, OutputLabel label) override;
    void finish() override;

private:
    void beginDataset(const Results& results, const OutputLabel& label);
    void endDataset();
    std::string profileBase() const;
    void expectPackage(OutputLabel label);
    std::string pointLayerBase(OutputLabel label);

    const RunOptions& options_;
    const Projection& projection_;
    bool lp_, cp_;
    bool started_ = false;
    CalibrationPoints marks_;
    std::unique_ptr<SamplePackage> package_;  ///< of -gpkg
    TimeFields times_;
    std::optional<ProfileStage> profiles_;
    std::optional<PointStage> points_;
    std::set<std::string> datasets_;  ///< bases of those that came
    std::size_t outputs_ = 0;
    OutputLabel last_;
};
