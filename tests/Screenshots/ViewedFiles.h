#pragma once

namespace wendlore {

class Bucket;

/// Makes files of every kind that is no note in the bucket, as the programs that users have make them; those
/// of LibreOffice and FFmpeg where these are installed.
void makeViewedFiles(const Bucket& bucket);

} // namespace wendlore
