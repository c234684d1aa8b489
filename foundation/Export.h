#pragma once

/// Marks a class or function as part of a library's public interface. Everything else is hidden, because the libraries
/// are built with -fvisibility=hidden.
#define QUENZO_API __attribute__((visibility("default")))

/// Hides a part of a public class that only the library itself calls.
#define QUENZO_LOCAL __attribute__((visibility("hidden")))
