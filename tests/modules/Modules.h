#pragma once

// The functions that the modules export. The program that loads them finds them by name.

#include <atomic>

/// What a module exports; all else in it is hidden.
#define MODULE_API __attribute__((visibility("default")))

extern "C" {

/// Describes, saves, loads and asks; returns 7 when all went well.
MODULE_API int UseLibrary();

/// Has the library ask whether a line is to be logged.
MODULE_API bool AskTheLog();

/// Has the library log a line.
MODULE_API void WriteTheLog();

/// Raises the failure of that number, from 0 to CountFailures() - 1, by QUENZO_THROW.
MODULE_API void Raise(int number);
MODULE_API int CountFailures();

/// Makes the call through a module that catches everything and raises it again.
MODULE_API void PassOn(void (*call)(int), int number);

/// Makes the call and says how what it raised was caught: the sum of 1 for boost::wrapexcept of the class of that
/// number, 2 for the class, 4 for its description read by its tag, 8 for its call stack and 16 for std::exception.
MODULE_API int Catch(void (*call)(int), int number);

/// The call stack below a function of the module, valid until the next call.
MODULE_API const char* StackOfModule();

/// How far the loading of the asking module is: it has begun, and another thread is about to ask. The program has it.
enum class Loading { NotBegun, Begun, Asked };
MODULE_API extern std::atomic<Loading> loading;
}
