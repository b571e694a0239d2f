// What the sanitizers are told in every test program, whoever starts it.

extern "C" {

const char* __lsan_default_suppressions();
const char* __tsan_default_options();

// Where the program would end, a test throws through Qt's own frames; they then keep the count of
// the guard that they held.
const char* __lsan_default_suppressions() {
    return "leak:QtSharedPointer::ExternalRefCountData::getAndRef\n";
}

// Qt is not built for the thread sanitizer: what its own threads do among themselves is passed
// over.
const char* __tsan_default_options() {
    return "ignore_noninstrumented_modules=1:second_deadlock_stack=1";
}

}  // extern "C"
