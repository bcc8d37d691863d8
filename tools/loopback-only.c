/* Preloaded into a program that serves its window over VNC: a socket that would listen on every address of the machine
   listens on 127.0.0.1 alone. Qt's VNC platform asks for no password and has no option for its address. */
#define _GNU_SOURCE
#include <arpa/inet.h>
#include <dlfcn.h>
#include <netinet/in.h>
#include <string.h>
#include <sys/socket.h>

typedef int (*bind_function)(int, const struct sockaddr*, socklen_t);

int bind(int fd, const struct sockaddr* address, socklen_t length)
{
    bind_function real = (bind_function)dlsym(RTLD_NEXT, "bind");
    if (address->sa_family == AF_INET6 && length >= sizeof(struct sockaddr_in6)) {
        struct sockaddr_in6 local;
        memcpy(&local, address, sizeof local);
        if (IN6_IS_ADDR_UNSPECIFIED(&local.sin6_addr)) inet_pton(AF_INET6, "::ffff:127.0.0.1", &local.sin6_addr);
        return real(fd, (const struct sockaddr*)&local, sizeof local);
    }
    if (address->sa_family == AF_INET && length >= sizeof(struct sockaddr_in)) {
        struct sockaddr_in local;
        memcpy(&local, address, sizeof local);
        if (local.sin_addr.s_addr == htonl(INADDR_ANY)) local.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        return real(fd, (const struct sockaddr*)&local, sizeof local);
    }
    return real(fd, address, length);
}
