#pragma once

#include "BareScene.h"

#include "telemetry/contracts/TelemetrySource.h"

#include <vector>

/// A moment of the demo.
TelemetrySample demoSample(double seconds);

/// A second of the demo, a sample for each tick of the engine.
std::vector<TelemetrySample> demoSamples();

/// The properties that the library publishes for those samples.
std::vector<Properties> demoMoments();
