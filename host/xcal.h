// Stand-in of the host date library.
#pragma once

constexpr int fcdate_fields = 6;

// When the file was last modified, in local time: year, month (1 to 12), day, hour, minute, second.
// 0, or nonzero with the date of 1 January 1980, the earliest that an archive can tell, when the file cannot
// be asked.
int fcdate(const char* path, int* date);
