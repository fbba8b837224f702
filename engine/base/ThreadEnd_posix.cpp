// SPDX-License-Identifier: Apache-2.0
#include "ThreadEnd.h"

#include <pthread.h>

namespace velmora {

ThreadEnd::ThreadEnd(void (*atEnd)(void*))
{
    pthread_key_t key{};
    m_exists = pthread_key_create(&key, atEnd) == 0;
    m_key = key;
}

bool ThreadEnd::ask(void* value) const
{
    return m_exists && pthread_setspecific(static_cast<pthread_key_t>(m_key), value) == 0;
}

} // namespace velmora
