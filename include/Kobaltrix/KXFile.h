#pragma once

#include <Kobaltrix/KXPlatform.h>

#include <list>
#include <stdio.h>

/// @file
/// Files, folders and '/'-separated paths.
///
/// Paths are bytes handed to the system unchanged (UTF-8 on every system of today); relative ones start at
/// the process's working directory.
///
/// On Windows paths have any length, and parts may stand between backslashes. Some names no file can have
/// there: what holds < > : " | ? * or a control character, ends with a dot or a blank, or is CON, PRN, AUX,
/// NUL, COM1 to COM9 or LPT1 to LPT9, with or without an extension. The library opens and makes nothing by
/// such a name, and says why in KXError() wherever a failure has a text. Names that players type had better
/// do without them on every system.
///
/// Two conventions of results must be kept apart: tests and KXMakeDirectory() give -1 for yes and 0 for no,
/// while KXRemoveFile() and KXRemoveDirectory() give 0 for success and -1 for failure. A null path is a path
/// that does not exist.

/// -1 if there is something at @a path (a file, a folder or anything else), else 0. A symbolic link counts by
/// what it leads to.
KX_API int KXFileExists(const char* path);

/// -1 if @a path can be opened as a folder, else 0.
KX_API int KXIsDirectory(const char* path);

/// fopen() for bytes that stay as they are on every system: no line end is made another one. For the values
/// of KXIO.h and whatever else goes by a stream.
/// @param path may hold any letter on every system. @param mode "r", "w" or "a", with "+" for both ways; a
/// "b" changes nothing.
/// @return a stream that the caller closes with fclose(); null, with a text in KXError() and a reason in
/// errno, where there is none.
KX_API FILE* KXOpenFile(const char* path, const char* mode);

/// Removes a file. @return 0 on success; -1 if there is nothing at @a path, if it is a folder, or if the
/// system refuses. Of a symbolic link the link is removed, and only if it leads to something.
KX_API int KXRemoveFile(const char* path);

/// Removes a folder with everything in it, and nothing outside it: of symbolic links the links are removed,
/// never what they lead to, also when @a path itself is one.
/// @return 0 if the folder was removed or at least something in it was; -1 if nothing was removed.
KX_API int KXRemoveDirectory(const char* path);

/// The paths of everything in a folder, each @a path with a name behind it, "." and ".." included, in
/// byte-wise order; empty if @a path is no folder that can be read. Files and folders look alike: ask
/// KXIsDirectory().
/// Throws std::bad_alloc rather than leaving something out.
/// @return the caller's own list, of temporary strings (so cut to 1023 bytes): never free them, and copy them
///   to keep them longer than the current logic step.
KX_API std::list<char*> KXDirectoryContents(const char* path);

/// Creates one folder, with all the permissions that the process's mask leaves; its parent must exist.
/// @return -1 on success, 0 on failure (also if something is there already) with a text in KXError().
KX_API int KXMakeDirectory(const char* path);

/// The text after the last '/', or all of @a path when there is none; null when it ends with '/' and for
/// null. The caller frees the result with free().
KX_API char* KXGetFilename(const char* path);

/// Joins two paths with exactly one '/' between them. A temporary string (so cut to 1023 bytes); null when
/// either is null.
KX_API const char* KXAppendPath(const char* a, const char* b);

/// The folder that holds @a path, with its trailing '/' ("a/b/" for "a/b/c", "a/" for "a/b/"); null when the
/// path names no folder, and for null. The caller frees the result with free().
KX_API char* KXGetContainingPathOf(const char* path);

/// The text after the last '.' anywhere in @a path, also in a folder's name; null when there is no '.', when
/// it is the last character, and for null. The caller frees the result with free().
KX_API char* KXGetExtension(const char* path);
