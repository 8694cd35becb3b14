target_sources(hy_util PRIVATE
)
