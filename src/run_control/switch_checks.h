// Which switches go together.
#pragma once

/// "Checking input flags.", then every rule in its order. Switches that another one overrides are cleared with a
/// warning; switches that contradict each other stop the run. None or several output formats set the input-error flag,
/// and the rest is still checked. A raster on disk is -asc or -flt: both mean the same in every rule. -lp with -cp is
/// one format.
void CHECK_SWITCHES();
