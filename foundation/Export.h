#pragma once

/// Marks a class or function as part of a library's public interface. Everything else is hidden, because the libraries
/// are built with -fvisibility=hidden.
#define QUENZO_API __attribute__((visibility("default")))
