#pragma once

#include <QString>

// The demo's telemetry configuration, the resource ":core" that the application object reads
// while it is constructed. It points the statistics clients at the demo collector on the
// loopback address: the port comes from the environment variable OVDEMO_COLLECTOR_PORT, or
// is kDefaultCollectorPort. Call it before the application object exists.
namespace OVDemoCoreConfig {

constexpr int kDefaultCollectorPort = 47810;

void Register();
// The collector's base URL, "http://127.0.0.1:<port>".
QString CollectorUrl();

} // namespace OVDemoCoreConfig
