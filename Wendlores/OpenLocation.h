#pragma once

namespace wendlore {

class AppState;
class FileURL;

/// Shows what the user named when starting the program: a folder as a bucket, a file in the registered bucket
/// that holds it, or else with its folder as a bucket.
void openLocation(AppState& state, const FileURL& location);

} // namespace wendlore
