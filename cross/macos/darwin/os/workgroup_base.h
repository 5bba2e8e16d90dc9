// Kelvane uses no workgroups. With their guards set, the headers about them, which dispatch reads,
// stay empty.
#ifndef KELVANE_DARWIN_OS_WORKGROUP_BASE_H
#define KELVANE_DARWIN_OS_WORKGROUP_BASE_H

#define __OS_WORKGROUP_OBJECT__
#define __OS_WORKGROUP_INTERVAL__
#define __OS_WORKGROUP_PARALLEL__

typedef struct os_workgroup_s* os_workgroup_t;

#endif
