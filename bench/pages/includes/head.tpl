<meta charset="utf-8"><meta name="description" content="{htmlspecialchars head_text}">
<meta property="og:title" content="{htmlspecialchars head_title}"><link rel="canonical" href="{head_url}">
