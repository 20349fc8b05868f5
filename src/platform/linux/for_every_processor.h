// Compiles a function for old and new processors, if the compiler can do that. The version for the
// processor at hand is chosen when the program is loaded.
#pragma once

#if defined(__x86_64__) && !defined(__SANITIZE_THREAD__)
#define LUMORA_FOR_EVERY_PROCESSOR [[gnu::target_clones("arch=x86-64-v4", "avx2", "default")]]
#else
#define LUMORA_FOR_EVERY_PROCESSOR
#endif
