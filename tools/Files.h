#pragma once

#include <cstdio>
#include <string>

namespace Quenzo::Tools {

/// All bytes of a file, or of standard input when the name is "-". Fails with Unreadable.
std::string ReadWhole(const std::string& name);

/// All bytes of an open file from its position on. Fails with Unreadable and the name given.
std::string ReadRest(std::FILE* file, const std::string& name);

/// Puts bytes into a file, all of them or none: a file that was there stays as it was until the new one is complete.
/// What is no regular file, such as /dev/null, is written directly. Fails with Unwritable.
void WriteWhole(const std::string& name, const std::string& bytes);

/// Gives the numbers of standard streams that are closed to files on which reading or writing fails as before, so that
/// no other file gets them and messages land in it.
void OccupyClosedStreams();

/// Writes to standard output. Fails with Unwritable.
void Print(const std::string& text);

/// Tells the user something that is no failure: one line on standard error.
void Note(const std::string& text);

}  // namespace Quenzo::Tools
