// The outputs of a run as stages: each takes what the inputs hand on, and owns its grids, plans, layers and tables. The
// driver knows nothing else of them.
#pragma once

#include "inputs/mesh.h"
#include "inputs/results.h"
#include "inputs/results_source.h"
#include "run_control/disk_room.h"
#include "run_control/output_names.h"
#include "services/projection.h"

#include <memory>
#include <vector>

class OutputStage {
public:
    virtual ~OutputStage() = default;
    /// Once the mesh is there: what the stage leaves out of it is said.
    virtual void meshRead(const Mesh&) {}
    /// What a dataset of such results will take on the disk; nothing where that cannot be told.
    virtual DiskUse diskUse(const Mesh&, const ResultsKind&, const Dataset&) const { return {}; }
    /// What comes next: several datasets and times of one kind. Memory taken for an earlier kind is given back first.
    virtual void begin(const Mesh& mesh, const ResultsKind& kind) = 0;
    /// One dataset at one output time. label: base and dataset tag; the grid size is filled in by the stage.
    virtual void take(const Results& results, OutputLabel label) = 0;
    /// The bed of a mesh that is converted alone; nothing else is begun or taken then.
    virtual void takeMesh(const Mesh& mesh, OutputLabel label) = 0;
    /// After the last one: whatever was collected is written.
    virtual void finish() {}
};

using OutputStages = std::vector<std::unique_ptr<OutputStage>>;

/// "ERROR - No data processed ...": the run has come to its end, or to where it sees it, without an output.
[[noreturn]] void STOP_WITHOUT_OUTPUT();

/// The stages of the formats asked for; stops the run before any work where a switch does not fit them. projection: of
/// the run, looked at from the first `begin` or `takeMesh` on; must live as long as the stages.
OutputStages MAKE_OUTPUT_STAGES(const Projection& projection);
