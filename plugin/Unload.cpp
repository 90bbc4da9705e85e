// Unloading the library leaves nothing behind.

// NOLINTBEGIN(bugprone-reserved-identifier): the names are that library's.
namespace __gnu_cxx {

// Part of the C++ library, which is inside this one: gives back the memory that it set aside at
// loading for exceptions when all other memory is used up. It does this at no other time.
__attribute__((weak)) void __freeres();

}   // namespace __gnu_cxx
// NOLINTEND(bugprone-reserved-identifier)

namespace vela {

namespace {

__attribute__((destructor)) void FreeMemoryForExceptions()
{
    if (__gnu_cxx::__freeres)
        __gnu_cxx::__freeres();
}

}   // namespace

}   // namespace vela
