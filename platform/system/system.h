// What the programs ask of the operating system beyond Win32: ordinary files and their replacement,
// memory, the terminal, signals. A call that fails leaves its reason in errno.
#pragma once

#include "platform/types.h"

#include <cstdio>
#include <string>

// Opens an ordinary file to read it, and gives its size. Null when that fails; for a folder, a pipe
// or a device errno is EISDIR.
std::FILE* OpenOrdinaryFile(const char* path, u64& bytes);

// Where a path leads, links followed; the path itself when nothing is there.
std::string FollowLinks(const char* path);

// What stands before the file's own name, with the slash; empty when there is nothing.
std::string FolderOf(const std::string& path);

// Creates a file that was not there before, with the rights that any new file gets. Null when that
// fails; errno is EEXIST when there is one.
std::FILE* CreateNewFile(const char* path);

// Gives `file` the access rights of the one at `model`.
bool CopyRights(const char* model, std::FILE* file);

// Sees that all that was written has reached the disk.
bool FlushToDisk(std::FILE* file);

// Moves a file to the place of another, which may exist, in one step.
bool MoveFileOver(const char* from, const char* to);

// Whether a value of errno means that there is no room left for a file.
bool IsDiskFull(int error);

// Of this machine, in bytes.
u64 PhysicalMemory();

// Whether the error stream goes to a terminal that can draw.
bool ErrorsGoToTerminal();

// From now on `handler` hears of Ctrl-C and of what else asks a program to stop, as a signal
// handler. Too large a file is then a failed write like any other.
void CatchStopRequests(void (*handler)(int signal));
