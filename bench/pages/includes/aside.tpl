<aside><h3>{htmlspecialchars aside_title}</h3><p>{htmlspecialchars aside_text}</p><a href="{aside_url}">More of this</a></aside>
