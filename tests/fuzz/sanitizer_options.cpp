// Requests beyond this size fail instead of ending the program: hostile sizes are to be survived, and filling gigabytes
// would only cost time.
extern "C" const char* __asan_default_options();
extern "C" const char* __asan_default_options() {
    return "allocator_may_return_null=1:max_allocation_size_mb=256";
}
