#include <TOVString/TOVResourceLoader.h>

ITOVResourceLoader* ITOVResourceLoader::m_pInstance = nullptr;

ITOVResourceLoader::ITOVResourceLoader() = default;
ITOVResourceLoader::ITOVResourceLoader(const ITOVResourceLoader&) = default;
ITOVResourceLoader& ITOVResourceLoader::operator=(const ITOVResourceLoader&) = default;

void ITOVResourceLoader::SetInstance(ITOVResourceLoader* pInstance)
{
    if (pInstance != nullptr)
        TOV_ASSERT(m_pInstance == NULL);
    m_pInstance = pInstance;
}

ITOVResourceLoader* ITOVResourceLoader::GetInstance()
{
    TOV_ASSERT(m_pInstance != NULL);
    return m_pInstance;
}

ITOVResourceLoader& ITOVResourceLoader::Instance()
{
    return *GetInstance();
}
