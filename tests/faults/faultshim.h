#pragma once

#include <functional>
#include <string>

/**
 * Sees the storage calls of the whole process, Qt's included, and lets chosen ones go wrong.
 *
 * A shared library that stands before the C library: a program that links it calls watch(); one
 * that gets it preloaded is cut where its environment says (see watchAsTheEnvironmentSays()).
 */
namespace faults {

struct Verdict
{
    enum Fault {
        None,
        Fail, ///< The call is not made and fails with the error.
        Short, ///< A write or read moves a part of its bytes; other calls are made.
        Cut, ///< The process is killed before the call.
        TornCut, ///< The process is killed after a write's first half.
    };

    Fault fault = None;
    int error = 0;
};

/**
 * Asked before every call, in its thread; may do what it likes, its own calls are not watched.
 * @p call is "open", "read", "write", "flush", "link", "rename" or "unlink".
 */
using Judge = std::function<Verdict(const char *call)>;

/**
 * From now on @p judge is asked about calls on @p directories ("A:B") and the files in them, by
 * whatever path; null ends it. With @p likeFat temporary files need a name, as on a stick's usual
 * file system. Not while another thread makes storage calls.
 */
void watch(const std::string &directories, const Judge &judge, bool likeFat = false);

} // namespace faults
