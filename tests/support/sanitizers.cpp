// Sanitizer options, compiled in so that they apply to every test program however it is started.

extern "C" {

const char* __lsan_default_suppressions();
const char* __tsan_default_options();

// Where the program would end, a test throws through Qt's own stack frames, which then leak the
// reference count of a guard they held.
const char* __lsan_default_suppressions() {
    return "leak:QtSharedPointer::ExternalRefCountData::getAndRef\n";
}

// Qt is not built with the thread sanitizer, so its internal accesses are ignored.
const char* __tsan_default_options() {
    return "ignore_noninstrumented_modules=1:second_deadlock_stack=1";
}

}  // extern "C"
