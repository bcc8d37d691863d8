#include "platform/Failure.h"

#include <cerrno>
#include <exception>
#include <new>
#include <stdexcept>
#include <system_error>

int FailureFromErrno(int error)
{
    switch (error) {
    case ENOENT: return FAIL_NOT_FOUND;
    case ENOTDIR: return FAIL_PATH;
    case EBUSY:
    case ETXTBSY: return FAIL_ALREADY_OPEN;
    case ENOSPC: return FAIL_DISK_FULL;
    case ENAMETOOLONG:
    case EINVAL:
    case EBADF: return FAIL_BAD_FILE;
    default: return FAIL_FILE_ACCESS;
    }
}

int FailureFromError(const std::error_code& error) { return FailureFromErrno(error.default_error_condition().value()); }

int FailureNumber(std::string& detail)
{
    try {
        throw;
    } catch (const Failure& failure) {
        detail = failure.what;
        return failure.number;
    } catch (const std::system_error& error) {  // std::filesystem::filesystem_error among them
        detail = error.what();
        return FailureFromError(error.code());
    } catch (const std::invalid_argument& error) {
        detail = error.what();
        return FAIL_TYPE_MISMATCH;
    } catch (const std::out_of_range& error) {
        detail = error.what();
        return FAIL_SUBSCRIPT;
    } catch (const std::overflow_error& error) {
        detail = error.what();
        return FAIL_OVERFLOW;
    } catch (const std::bad_alloc& error) {
        detail = error.what();
        return FAIL_MEMORY;
    } catch (const std::exception& error) {
        detail = error.what();
        return FAIL_FILE_ACCESS;
    }
}
