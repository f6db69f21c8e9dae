#pragma once

/// Bars tell their domain and their bounding block from now on, until they are taken back.
void addBarProtocols();
void removeBarProtocols();
